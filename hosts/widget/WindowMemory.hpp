// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QTimer>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::widget {

/// What a window is like, as far as it comes back with the next start.
struct WindowState {
    std::optional<QPoint> position; ///< of its frame; absent where the window system does not tell
    bool expanded = true;
    bool onTop = false;
    bool onDesktop = false; ///< never with the one before
    bool tray = false;
    bool operator==(const WindowState&) const = default;
};

/// As a line of text and back; absent for a text that says something else. Words that are not known are
/// passed over. Pure.
[[nodiscard]] std::string stateText(const WindowState& state);
[[nodiscard]] std::optional<WindowState> parseState(std::string_view text);

/// Keeps it in $XDG_STATE_HOME/vantor/widget-window; a failure is of no consequence.
void rememberWindow(const WindowState& state);
[[nodiscard]] std::optional<WindowState> rememberedWindow();

/// Keeps a window's state as it changes, a second after the last change: a session often ends without a word
/// to its programs. What is still to be written is written at the end of this object. Main thread.
class WindowKeeper {
public:
    WindowKeeper();
    ~WindowKeeper();
    WindowKeeper(const WindowKeeper&) = delete;
    WindowKeeper& operator=(const WindowKeeper&) = delete;

    /// What was kept before; as a first start has it where nothing was.
    [[nodiscard]] WindowState state() const { return m_written.value_or(WindowState{}); }
    void keep(const WindowState& state);

private:
    void write();

    std::optional<WindowState> m_written;
    std::optional<WindowState> m_state;
    QTimer m_later;
};

} // namespace vantor::hosts::widget
