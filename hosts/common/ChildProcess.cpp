// SPDX-License-Identifier: MIT
#include "hosts/common/ChildProcess.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>

namespace vantor::hosts::common {

using platform::posix::Descriptor;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

/// What posix_spawn(3) is told about the child.
class Setting {
public:
    Setting() {
        ::posix_spawn_file_actions_init(&m_files);
        ::posix_spawnattr_init(&m_attributes);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::posix_spawn_file_actions_addopen(&m_files, stream, "/dev/null", O_RDWR, 0);
        }
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&m_attributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
        ::posix_spawnattr_setflags(&m_attributes,
                                   POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~Setting() {
        ::posix_spawnattr_destroy(&m_attributes);
        ::posix_spawn_file_actions_destroy(&m_files);
    }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* files() const { return &m_files; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

/// Texts as execve(2) wants them, which does not write into them.
std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) {
        pointers.push_back(const_cast<char*>(text.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Until `descriptor` can be read; false when that does not happen before `end`.
bool waitToRead(int descriptor, steady_clock::time_point end) {
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now()).count();
        struct pollfd ready {};
        ready.fd = descriptor;
        ready.events = POLLIN;
        const int found = ::poll(&ready, 1, static_cast<int>(std::clamp<std::int64_t>(left, 0, INT_MAX)));
        if (found != 0 && !(found < 0 && errno == EINTR)) {
            return found > 0;
        }
        if (left <= 0) {
            return false;
        }
    }
}

} // namespace

std::optional<ChildProcess> ChildProcess::start(const std::string& program,
                                                const std::vector<std::string>& arguments,
                                                const std::vector<std::string>& environment) {
    const Setting setting;
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), program);
    pid_t child = 0;
    if (::posix_spawn(&child, program.c_str(), setting.files(), setting.attributes(),
                      pointersTo(words).data(), pointersTo(environment).data()) != 0) {
        return std::nullopt;
    }
    return ChildProcess(child);
}

std::optional<bool> ChildProcess::wait(milliseconds patience) const {
    const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, m_number, 0)));
    if (process.isOpen() && patience != milliseconds::max() &&
        !waitToRead(process.number(), steady_clock::now() + patience)) {
        return std::nullopt;
    }
    int status = 0;
    pid_t ended = 0;
    do {
        ended = ::waitpid(m_number, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended < 0 || status == 0; // where somebody ignores SIGCHLD for us, nobody can tell
}

} // namespace vantor::hosts::common
