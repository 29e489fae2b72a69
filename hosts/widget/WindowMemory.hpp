// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::widget {

/// What a window was like when it closed.
struct WindowState {
    std::optional<QPoint> position; ///< of its frame; absent where the window system does not tell
    bool expanded = true;
    bool operator==(const WindowState&) const = default;
};

/// As a line of text and back; absent for a text that says something else. Pure.
[[nodiscard]] std::string stateText(const WindowState& state);
[[nodiscard]] std::optional<WindowState> parseState(std::string_view text);

/// Keeps it in $XDG_STATE_HOME/vantor/widget-window; a failure is of no consequence.
void rememberWindow(const WindowState& state);
[[nodiscard]] std::optional<WindowState> rememberedWindow();

} // namespace vantor::hosts::widget
