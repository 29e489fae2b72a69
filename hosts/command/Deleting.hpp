// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"

#include <cstdint>
#include <functional>

/// What the commands that delete have in common: they list, ask, delete, and tell what came of it.
namespace vantor::hosts::command {

/// What they are asked for.
struct DeletionWish {
    bool dryRun = false;
    bool yes = false;
};

/// False, and said, where deleting was not agreed to and nobody can be asked.
[[nodiscard]] bool canDelete(const DeletionWish& wish);

/// Shows a list, asks where that is wanted, deletes and tells what came of it. `bytes` is the list's sum. An
/// interruption stops the work at the next entry. Gives the exit status.
[[nodiscard]] int deleteListed(const DeletionWish& wish, std::uint64_t bytes,
                               const std::function<void()>& list,
                               const std::function<Released(const std::function<bool()>&)>& run);

} // namespace vantor::hosts::command
