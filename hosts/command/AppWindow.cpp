// SPDX-License-Identifier: MIT
#include "hosts/command/AppWindow.hpp"

#include "hosts/command/Display.hpp"
#include "platform/posix/Descriptor.hpp"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace vantor::hosts::command {

std::string appProgram() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& candidate : {folder / "vantor-app", folder.parent_path() / "app/vantor-app"}) {
        if (!error && ::access(candidate.c_str(), X_OK) == 0) {
            return candidate.string();
        }
    }
    return {};
}

bool canShowWindow() {
    return hasDisplay() && !appProgram().empty();
}

std::string becomeWindow(const std::string& program, const std::string& link) {
    std::string name = program, argument = link;
    const std::array<char*, 3> words{name.data(), link.empty() ? nullptr : argument.data(), nullptr};
    ::execv(program.c_str(), words.data());
    return program + ": " + platform::posix::errorText(errno);
}

} // namespace vantor::hosts::command
