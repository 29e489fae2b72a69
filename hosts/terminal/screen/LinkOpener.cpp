// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/LinkOpener.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

extern char** environ; // NOLINT(readability-redundant-declaration): not every libc declares it

namespace vantor::hosts::terminal {

namespace {

constexpr const char* openers[] = {"/usr/bin/xdg-open", "/usr/local/bin/xdg-open", "/bin/xdg-open"};

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody sets it
    return value != nullptr && !std::string_view(value).empty();
}

/// With nothing on the terminal, no signals blocked and a process group of its own.
bool spawn(const char* program, const std::string& link) {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawnattr_init(&attributes);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&files, descriptor, "/dev/null", O_RDWR, 0);
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    std::string name = program;
    std::string argument = link;
    char* const arguments[] = {name.data(), argument.data(), nullptr};
    pid_t child = 0;
    const bool started = ::posix_spawn(&child, program, &files, &attributes, arguments, environ) == 0;
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&files);
    return started;
}

} // namespace

bool openLink(const std::string& link) {
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY")) {
        return false;
    }
    for (const char* const opener : openers) {
        if (::access(opener, X_OK) == 0) {
            return spawn(opener, link);
        }
    }
    return false;
}

bool reapOpeners() {
    bool anyFailed = false;
    int status = 0;
    while (::waitpid(-1, &status, WNOHANG) > 0) {
        anyFailed = anyFailed || status != 0;
    }
    return anyFailed;
}

} // namespace vantor::hosts::terminal
