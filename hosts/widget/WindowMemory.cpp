// SPDX-License-Identifier: MIT
#include "hosts/widget/WindowMemory.hpp"

#include "hosts/common/UserFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <algorithm>
#include <charconv>
#include <vector>

namespace vantor::hosts::widget {

namespace {

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
    return text + '\n';
}

std::optional<WindowState> parseState(std::string_view text) {
    const std::vector<std::string_view> parts = words(text);
    if (parts.empty() || (parts[0] != "expanded" && parts[0] != "compact")) {
        return std::nullopt;
    }
    WindowState state;
    state.expanded = parts[0] == "expanded";
    if (parts.size() == 3) {
        const std::optional<int> x = coordinate(parts[1]);
        const std::optional<int> y = coordinate(parts[2]);
        if (x && y) {
            state.position = QPoint(*x, *y);
        }
    }
    return state;
}

void rememberWindow(const WindowState& state) {
    (void)common::writeUserFile(statePath(), stateText(state));
}

std::optional<WindowState> rememberedWindow() {
    return parseState(common::readUserFile(statePath()));
}

} // namespace vantor::hosts::widget
