// SPDX-License-Identifier: MIT
#pragma once

class QPoint;
class QWidget;

/// Where a window is on its screen.
namespace vantor::hosts::qt {

/// Whether the window system is Wayland, which neither tells a client where its windows are nor lets it move
/// them.
[[nodiscard]] bool isWayland();
/// Whether it is X11.
[[nodiscard]] bool isX11();

/// What the contents margins of a window hold, such as a shadow, need not be on a screen.

/// Moves a window to a remembered place, if that is still on a screen.
void moveBackTo(QWidget& window, const QPoint& place);

/// The place nearest to `place` where a window is on the screen that `place` is on, once it is `growth`
/// logical pixels higher than now; `place` itself where there is none, or nobody may choose it.
[[nodiscard]] QPoint placeOnScreen(const QWidget& window, const QPoint& place, int growth = 0);

/// Moves a window that has grown back onto the screen it is on.
void keepOnScreen(QWidget& window);

} // namespace vantor::hosts::qt
