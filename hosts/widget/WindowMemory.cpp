// SPDX-License-Identifier: MIT
#include "hosts/widget/WindowMemory.hpp"

#include "hosts/common/UserFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <utility>
#include <vector>

namespace vantor::hosts::widget {

namespace {

struct Mark {
    std::string_view word;
    bool WindowState::*value;
};
constexpr std::array marks{Mark{"on-top", &WindowState::onTop}, Mark{"on-desktop", &WindowState::onDesktop},
                           Mark{"tray", &WindowState::tray}};

std::string statePath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().state,
                                "vantor/widget-window");
}

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> result;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find_first_of(" \n"), line.size());
        if (end > 0) {
            result.push_back(line.substr(0, end));
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return result;
}

std::optional<int> coordinate(std::string_view word) {
    int value = 0;
    const auto [last, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    return error == std::errc() && last == word.data() + word.size() ? std::optional(value) : std::nullopt;
}

} // namespace

std::string stateText(const WindowState& state) {
    std::string text = state.expanded ? "expanded" : "compact";
    if (state.position) {
        text += ' ' + std::to_string(state.position->x()) + ' ' + std::to_string(state.position->y());
    }
    for (const Mark& mark : marks) {
        if (state.*mark.value) {
            text += ' ' + std::string(mark.word);
        }
    }
    return text + '\n';
}

std::optional<WindowState> parseState(std::string_view text) {
    const std::vector<std::string_view> parts = words(text);
    if (parts.empty() || (parts[0] != "expanded" && parts[0] != "compact")) {
        return std::nullopt;
    }
    WindowState state;
    state.expanded = parts[0] == "expanded";
    const std::optional<int> x = parts.size() > 2 ? coordinate(parts[1]) : std::nullopt;
    const std::optional<int> y = parts.size() > 2 ? coordinate(parts[2]) : std::nullopt;
    if (x && y) {
        state.position = QPoint(*x, *y);
    }
    for (const Mark& mark : marks) {
        state.*mark.value = std::ranges::find(parts, mark.word) != parts.end();
    }
    state.onDesktop = state.onDesktop && !state.onTop;
    return state;
}

void rememberWindow(const WindowState& state) {
    (void)common::writeUserFile(statePath(), stateText(state));
}

WindowKeeper::WindowKeeper() : m_written(rememberedWindow()) {
    m_later.setSingleShot(true);
    m_later.setInterval(std::chrono::seconds(1));
    m_later.callOnTimeout([this] { write(); });
}

WindowKeeper::~WindowKeeper() {
    write();
}

void WindowKeeper::keep(const WindowState& state) {
    if (std::exchange(m_state, state) != state) {
        m_later.start();
    }
}

void WindowKeeper::write() {
    m_later.stop();
    if (m_state && m_state != m_written) {
        rememberWindow(*m_state);
        m_written = m_state;
    }
}

std::optional<WindowState> rememberedWindow() {
    return parseState(common::readUserFile(statePath()));
}

} // namespace vantor::hosts::widget
