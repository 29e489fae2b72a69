// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <memory>
#include <optional>
#include <string>

namespace vantor::platform::remote {

/// What an exporter's answer came to.
struct NodeTold {
    std::optional<Reading> reading; ///< with memory figures
    std::string problem;            ///< why there is none; English, printable
    bool isFilterUnknown = false;   ///< a collector is switched off there: ask again for everything
};

/// The question for an exporter's figures: of all its collectors, or filtered, of those alone that are
/// needed.
[[nodiscard]] FetchRequest nodeQuestion(const NodeAddress& address, std::shared_ptr<const Access> access,
                                        bool isFiltered);

/// Whether a question may be filtered: an address with a question of its own says what it wants.
[[nodiscard]] bool mayFilter(const NodeAddress& address);

/// Reads the answer. Any thread: meant for the fetcher's.
[[nodiscard]] NodeTold nodeTold(const FetchAnswer& answer, bool wasFiltered);

} // namespace vantor::platform::remote
