// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Sampler.hpp"

#include <QSize>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::app {

/// What comes back with the next start: the window's size, in logical pixels, and its page.
struct AppState {
    QSize size;
    PageKind page = PageKind::memory;
    bool operator==(const AppState&) const = default;
};

/// As a line of text and back; absent for a text that says something else, or no size for a window.
[[nodiscard]] std::string stateText(const AppState& state);
[[nodiscard]] std::optional<AppState> parseState(std::string_view text);

/// Keeps it in $XDG_STATE_HOME/vantor/app-window; a failure is of no consequence.
void rememberApp(const AppState& state);
[[nodiscard]] std::optional<AppState> rememberedApp();

} // namespace vantor::hosts::app
