// SPDX-License-Identifier: MIT
#include "hosts/app/AppMemory.hpp"

#include "hosts/common/UserFile.hpp"
#include "hosts/qt/WindowSize.hpp"
#include "platform/posix/UserFolders.hpp"

namespace vantor::hosts::app {

namespace {

std::string statePath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().state, "vantor/app-window");
}

} // namespace

std::string stateText(const AppState& state) {
    return qt::sizeText(state.size) + ' ' + std::to_string(static_cast<int>(state.page)) + '\n';
}

std::optional<AppState> parseState(std::string_view text) {
    const std::optional<QSize> size = qt::takeSize(text);
    const std::optional<int> page = qt::takeNumber(text);
    return size && page && *page >= 0 && *page < static_cast<int>(pageCount)
               ? std::optional(AppState{*size, static_cast<PageKind>(*page)})
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
