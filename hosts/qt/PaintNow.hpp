// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <functional>

class QImage;
class QWidget;

namespace vantor::hosts::qt {

/// Draws all of an area, in pixels of the image, of four bytes each: what is there before may be gone.
using FrameDrawing = std::function<void(QImage& window, const QRect& area)>;

/// Has `area` of a widget, in its coordinates, drawn into its window's memory and sends that to the screen at
/// once, past the toolkit's bookkeeping of what is to be repainted. It is for the frames of a motion: the
/// widget's own paintEvent must come to the same picture. False where that cannot be: hidden, off screen, cut
/// off or covered by another widget, or painted elsewhere than in memory; then `update` is the way.
[[nodiscard]] bool paintNow(QWidget& widget, const QRect& area, const FrameDrawing& draw);

} // namespace vantor::hosts::qt
