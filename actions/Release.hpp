// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Disposal.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantor {

/// What a deletion came to.
struct Released {
    std::size_t items = 0;   ///< that are gone
    std::uint64_t bytes = 0; ///< the sum of what was deleted, of items that went in part too
    /// What the volumes have more available than before, never below 0; absent where one does not say. It is
    /// less than the sum where a snapshot, a copy or an open file keeps the blocks, and where the file system
    /// gives them back late.
    std::optional<std::uint64_t> gained = 0;
    std::vector<std::string> problems = {}; ///< in English, printable: what stayed, and why
};

/// One thing to delete: a folder on its volume that stays, and what deletes it.
struct Deletion {
    std::string folder;
    std::function<platform::Removal()> run;
};

/// Runs deletions one after the other and measures them. `keepGoing` is asked before each. Afterwards what is
/// releasable is counted again for running widgets, as far as that takes no more than two seconds; they
/// follow what the volume gained by themselves until then.
[[nodiscard]] Released release(const std::vector<Deletion>& deletions,
                               const platform::Disposal::KeepGoing& keepGoing);

} // namespace vantor
