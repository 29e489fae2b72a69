// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::common {

/// The height that a widget gets in compact mode, in points. How wide it is, and how much room the expanded
/// mode has, is up to the host.
inline constexpr double compactHeight = 110;

} // namespace vantor::hosts::common
