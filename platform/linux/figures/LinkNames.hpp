// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/LinkKind.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// The platform's name for a link that is not numbered: "lo0" for the loopback, else the link's own name.
/// Where that would pass for a card's or a modem's ("en…", "pdp_ip…") it gets "virtual-" in front, so that
/// the link counts as nothing.
[[nodiscard]] std::string unnumberedName(LinkKind kind, std::string_view name);

/// The platform's name for a numbered link: "en" or "pdp_ip" and the number.
[[nodiscard]] std::string numberedName(LinkKind kind, std::uint32_t number);

/// Hands out the numbers of one kind: each link keeps its own as long as it holds it, a new one gets the
/// lowest that is free.
class NumberPool {
public:
    [[nodiscard]] std::uint32_t take();
    void give(std::uint32_t number); ///< the number is free again

private:
    std::vector<bool> m_taken;
};

} // namespace vantor::platform::linux
