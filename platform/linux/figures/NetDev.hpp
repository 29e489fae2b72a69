// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::linux {

/// One line of /proc/net/dev (proc_net(5)): a network link's name and its byte counters since it came up.
struct LinkCounters {
    std::string_view name; ///< any bytes but blanks and slashes, at most 15; valid as long as the text
    std::uint64_t receivedBytes = 0;
    std::uint64_t sentBytes = 0;
    bool operator==(const LinkCounters&) const = default;
};

/// Takes the next link off the text of /proc/net/dev. Headings and lines that cannot be read, or are cut
/// short, are passed over; absent at the end.
[[nodiscard]] std::optional<LinkCounters> takeLink(std::string_view& text);

/// Whether a text without any link that can be read is the kernel's all the same: its two headings and
/// nothing more, as in a network namespace where not even the loopback is shown.
[[nodiscard]] bool isEmptyLinkList(std::string_view text);

} // namespace vantor::platform::linux
