// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Options.hpp"

namespace vantor::hosts::app {

/// The size of the window as it first comes up, in points.
inline constexpr int usualWidth = 900, usualHeight = 640;

/// Draws one page into the file of `options.snapshot`, as soon as it has its figures, and as tall as it is.
/// The exit status of the program: 1 when the file cannot be written, which is said on standard error, and
/// when a source cannot be read. A machine, a workload and a viewer are in place and an application object
/// exists.
[[nodiscard]] int writeSnapshot(const Options& options);

} // namespace vantor::hosts::app
