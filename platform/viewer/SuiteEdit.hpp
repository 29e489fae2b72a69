// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/SuiteFile.hpp"

#include <functional>
#include <optional>
#include <string>

namespace vantor::platform {

/// What is to become of a preference file.
struct SuiteEdit {
    std::optional<std::string> content = {}; ///< the new bytes; absent: the file stays as it is
    /// Whether the file that is there is kept beside the new one, under its name with ".broken-" and the date
    /// behind.
    bool setAside = false;
    std::optional<std::string> refusal = {}; ///< why there are no new bytes; absent where none are needed
    bool couldBeSetAside = false;            ///< whether `setAside` would help
};

/// Makes the edit from the file as it is. Called once more, with the file found under the lock, where there
/// was none before. A process of its own may do it: what it does but give the edit is then lost.
using SuiteEditor = std::function<SuiteEdit(const SuiteFile& current)>;

/// What became of it.
struct SuiteChange {
    bool changed = false;
    std::string setAside = {};               ///< where the old file is kept, if it was
    std::optional<std::string> failure = {}; ///< why nothing was written, in English, the path first
    bool couldBeSetAside = false;            ///< as the edit said
};

} // namespace vantor::platform
