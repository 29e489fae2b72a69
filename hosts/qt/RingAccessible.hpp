// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::qt {

class RingView;

/// Makes rings known to screen readers: a button named by caption and percentage ("Used RAM, 34%"), described
/// by what it does, with the percentage as its value. Harmless when repeated.
void installRingAccessibility();

/// Tells a listening screen reader that a ring shows another value; quietly, so nothing is read out.
void announceRingValue(RingView& ring);

} // namespace vantor::hosts::qt
