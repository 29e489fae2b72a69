// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::common {

/// Where a desktop keeps which program opens which links, after the MIME applications and the base directory
/// rules. Paths are absolute; those that do not exist are no problem.
struct LinkHandlers {
    std::vector<std::string> lists;        ///< files of choices: mimeapps.list, and one for each desktop
    std::vector<std::string> applications; ///< folders of desktop entries; the user's own first

    /// From XDG_CONFIG_HOME, XDG_CONFIG_DIRS, XDG_DATA_HOME, XDG_DATA_DIRS and XDG_CURRENT_DESKTOP.
    static LinkHandlers fromEnvironment();

    /// Whether a desktop entry is there that opens links of a scheme, such as "vantor": one that the user or
    /// the system chose, or one that says so itself and that nobody took the scheme from. Reads what the
    /// desktop's own tools read, without starting them: a few files, and those of a folder without a cache
    /// one by one. Where a folder is not on a file system of this machine, a child process looks, and true
    /// is what is assumed when it gives no answer within a second. Any thread, one at a time.
    [[nodiscard]] bool haveScheme(std::string_view scheme) const;
};

} // namespace vantor::hosts::common
