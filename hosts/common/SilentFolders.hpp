// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace vantor::hosts::common {

/// The toolkit and what it loads (fontconfig, the desktop's themes, the display's key) look into the user's
/// folders at their own time and wait for a file system that hangs without end. So these are asked before.
/// Gives the first folder that they cannot be kept from and that does not answer within five seconds; absent
/// where all do. A cache that does not answer is taken out of the environment instead: programs that are
/// started from here on do without it too. Before other threads run.
[[nodiscard]] std::optional<std::string> settleFolders();

} // namespace vantor::hosts::common
