// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/BoundedChild.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <vector>

namespace vantor::platform::linux::gpu {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestAnswer = std::size_t{64} << 10U;

[[noreturn]] void workInChild(const std::function<std::string()>& work, int answer, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(1);
    }
    answer = ::fcntl(answer, F_DUPFD_CLOEXEC, STDERR_FILENO + 1); // out of the way of what is replaced next
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(nowhere, standard);
    }
    const std::string result = work();
    std::size_t written = 0;
    while (written < result.size()) {
        const ssize_t count = ::write(answer, result.data() + written, result.size() - written);
        if (count < 0 && errno != EINTR) {
            ::_exit(1);
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    ::_exit(0); // no destructors: they belong to the parent
}

int millisecondsUntil(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, 1'000'000));
}

/// Reads to the end of the pipe; absent when the deadline comes first.
std::optional<std::string> readUntil(int pipe, Clock::time_point deadline) {
    std::string result;
    std::array<char, 1024> chunk{};
    while (result.size() < longestAnswer) {
        pollfd waiting{pipe, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, millisecondsUntil(deadline));
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return std::nullopt;
        }
        const ssize_t count = ::read(pipe, chunk.data(), chunk.size());
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        if (count == 0) {
            return result;
        }
        result.append(chunk.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return std::nullopt;
}

/// Ends children and collects them. One that hangs inside the kernel cannot be collected yet: it waits here
/// for the next call, which must not wait for it either.
void reap(pid_t child) {
    static std::mutex mutex;
    static std::vector<pid_t> waiting;
    ::kill(child, SIGKILL);
    const std::scoped_lock lock(mutex);
    waiting.push_back(child);
    std::erase_if(waiting, [](pid_t each) {
        for (int tries = 0; tries < 20; ++tries) {
            if (::waitpid(each, nullptr, WNOHANG) != 0) {
                return true; // collected, or somebody else's by now
            }
            ::poll(nullptr, 0, 5);
        }
        return false;
    });
}

} // namespace

std::optional<std::string> runInChild(const std::function<std::string()>& work,
                                      std::chrono::milliseconds limit) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const posix::Descriptor reading(pipe[0]);
    posix::Descriptor writing(pipe[1]);
    const Clock::time_point deadline = Clock::now() + limit;
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        workInChild(work, writing.number(), parent);
    }
    writing.reset();
    std::optional<std::string> answer;
    if (child > 0) {
        answer = readUntil(reading.number(), deadline);
        reap(child);
    }
    return answer && !answer->empty() ? answer : std::nullopt;
}

} // namespace vantor::platform::linux::gpu
