// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::command {

/// How the program ends.
inline constexpr int done = 0;
inline constexpr int nothingThere = 1; ///< not set, or nothing to gain
inline constexpr int wrongUsage = 2;   ///< in options or values; nothing was done
inline constexpr int refused = 3;      ///< by a file or by the system, which is named

} // namespace vantor::hosts::command
