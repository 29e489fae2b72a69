// SPDX-License-Identifier: MIT
#include "hosts/app/AppMemory.hpp"

#include "hosts/common/UserFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <array>
#include <charconv>

namespace vantor::hosts::app {

namespace {

std::string statePath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().state, "vantor/app-window");
}

} // namespace

std::string stateText(const AppState& state) {
    return std::to_string(state.size.width()) + ' ' + std::to_string(state.size.height()) + ' ' +
           std::to_string(static_cast<int>(state.page)) + '\n';
}

std::optional<AppState> parseState(std::string_view text) {
    constexpr int greatest = 32'767; // pixels that a window of X11 may have
    std::array<int, 3> numbers{};
    for (int& number : numbers) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc()) {
            return std::nullopt;
        }
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        text.remove_prefix(text.empty() ? 0 : 1);
    }
    const auto [width, height, page] = numbers;
    const bool isSize = width > 0 && height > 0 && width <= greatest && height <= greatest;
    return isSize && page >= 0 && page < static_cast<int>(pageCount)
               ? std::optional(AppState{QSize(width, height), static_cast<PageKind>(page)})
               : std::nullopt;
}

void rememberApp(const AppState& state) {
    if (const std::string path = statePath(); !path.empty()) {
        (void)common::writeUserFile(path, stateText(state));
    }
}

std::optional<AppState> rememberedApp() {
    const std::string path = statePath();
    return path.empty() ? std::nullopt : parseState(common::readUserFile(path));
}

} // namespace vantor::hosts::app
