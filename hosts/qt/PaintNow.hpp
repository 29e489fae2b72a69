// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <functional>

class QImage;
class QWidget;

namespace vantor::hosts::qt {

/// Has `area` of a widget, in its coordinates, drawn into its window's memory and sends that to the screen at
/// once, past the toolkit's bookkeeping of what is to be repainted. It is for the frames of a motion: the
/// widget's own paintEvent must come to the same picture. `draw` gets the window's image, of four bytes a
/// pixel. False where that cannot be: off screen, covered by another widget, or painted elsewhere than in
/// memory; then `update` is the way.
[[nodiscard]] bool paintNow(QWidget& widget, const QRect& area, const std::function<void(QImage&)>& draw);

} // namespace vantor::hosts::qt
