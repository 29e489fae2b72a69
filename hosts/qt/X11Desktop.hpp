// SPDX-License-Identifier: MIT
#pragma once

class QMargins;
class QWindow;

/// What only X11 knows, beyond the toolkit's own words. Under another window system nothing is done.
namespace vantor::hosts::qt {

/// Makes a window a part of the desktop, or an ordinary one again: on every workspace, in no list of windows,
/// and left where it is when the desktop is shown (EWMH's _NET_WM_STATE and _NET_WM_WINDOW_TYPE). To be
/// called while the window is not on screen, each time before it comes there.
void setPartOfX11Desktop(const QWindow& window, bool is);

/// Tells how much of a window, in logical pixels, is around what there is to see of it, so that window
/// managers place that and nobody casts a shadow of a shadow (_GTK_FRAME_EXTENTS, which most of them read).
void tellX11Margins(const QWindow& window, const QMargins& margins);

/// Whether a tray of the older kind is there, which takes windows in (the System Tray Protocol). Asks the
/// server.
[[nodiscard]] bool hasX11Tray();

/// Whether somebody composes the screen, so that windows may be translucent. Asks the server; true under
/// other window systems.
[[nodiscard]] bool isComposed();

} // namespace vantor::hosts::qt
