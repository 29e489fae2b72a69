// SPDX-License-Identifier: MIT
#pragma once

class QPoint;
class QWidget;

/// Where a window is on its screen.
namespace vantor::hosts::qt {

/// Whether the window system is Wayland, which neither tells a client where its windows are nor lets it move
/// them.
[[nodiscard]] bool isWayland();

/// Moves a window to a remembered place, if that is still on a screen.
void moveBackTo(QWidget& window, const QPoint& place);

/// Moves a window that has grown back onto the screen it is on.
void keepOnScreen(QWidget& window);

} // namespace vantor::hosts::qt
