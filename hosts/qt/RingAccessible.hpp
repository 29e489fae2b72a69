// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::qt {

/// Makes rings known to screen readers: a button named by caption and percentage ("Used RAM, 34%"), described
/// by what it does, with the percentage as its value; one that takes no focus as a progress bar by its
/// accessible name, or as a picture without one; and a plain window as a window. Call it before
/// the first ring is shown; it may be repeated.
void installRingAccessibility();

} // namespace vantor::hosts::qt
