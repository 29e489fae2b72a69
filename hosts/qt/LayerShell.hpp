// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

class QPoint;
class QSize;
class QWindow;

/// Cards that a Wayland compositor keeps above or below the windows (wlr-layer-shell, on wlroots and KWin),
/// where LayerShellQt was there when this was built. Its library is loaded by the first call only.
namespace vantor::hosts::qt {

enum class Layer : std::uint8_t { belowWindows, aboveWindows };

/// Edges of the screen, as the protocol counts them.
namespace Edge {
inline constexpr unsigned top = 1;
inline constexpr unsigned bottom = 2;
inline constexpr unsigned left = 4;
inline constexpr unsigned right = 8;
} // namespace Edge

/// The edges that a word such as "top-right" names; none for "center" and for any other word.
[[nodiscard]] unsigned edgesOf(std::string_view word);

/// Puts a window that was created and not yet shown on a layer, at these edges, `margin` pixels from them.
/// False where the compositor knows no layers, or the program was built without them: then nothing has
/// changed.
[[nodiscard]] bool putOnLayer(QWindow& window, Layer layer, unsigned edges, int margin);

/// Where a window on a layer is on its screen, as long as no panel takes room of the screen.
[[nodiscard]] QPoint placeOnLayer(const QSize& window, const QSize& screen, unsigned edges, int margin);

} // namespace vantor::hosts::qt
