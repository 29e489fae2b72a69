// SPDX-License-Identifier: MIT
#include "platform/posix/BoundedChild.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace vantor::platform::posix {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestAnswer = std::size_t{2} << 20U;

constexpr int answerNumber = STDERR_FILENO + 1;

/// A display's connection that stays open in the child would look like a program that is still there.
void closeDescriptorsFrom(unsigned first) {
#ifdef SYS_close_range
    if (::syscall(SYS_close_range, first, ~0U, 0U) == 0) { // since Linux 5.9
        return;
    }
#endif
    constexpr rlim_t most = 65'536;
    rlimit limit{most, most};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    for (unsigned number = first; number < std::min(limit.rlim_cur, most); ++number) {
        ::close(static_cast<int>(number));
    }
}

void keepOnly(int answer) {
    ::dup2(answer, answerNumber);
    closeDescriptorsFrom(answerNumber + 1);
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (nowhere < 0 || ::dup2(nowhere, standard) < 0) {
            ::close(standard);
        }
    }
    if (nowhere > answerNumber) {
        ::close(nowhere);
    }
}

/// A handler of the parent's would wake the parent's loop through descriptors that both have.
void handleNoSignals() {
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal) {
        ::sigaction(signal, &byDefault, nullptr);
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void workInChild(const std::function<std::string()>& work, int answer, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) {
        ::_exit(1);
    }
    handleNoSignals();
    keepOnly(answer);
    const std::string result = work();
    std::size_t written = 0;
    while (written < result.size()) {
        const ssize_t count = ::write(answerNumber, result.data() + written, result.size() - written);
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

} // namespace

std::optional<std::string> BoundedChild::run(const std::function<std::string()>& work,
                                             std::chrono::milliseconds limit) {
    std::array<int, 2> pipe{};
    if (isBusy() || ::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const Descriptor reading(pipe[0]);
    Descriptor writing(pipe[1]);
    const Clock::time_point deadline = Clock::now() + limit;
    const pid_t parent = ::getpid();
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = ::fork();
    if (child == 0) {
        workInChild(work, writing.number(), parent);
    }
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    writing.reset();
    if (child < 0) {
        return std::nullopt;
    }
    m_child = child;
    std::optional<std::string> answer = readUntil(reading.number(), deadline);
    if (answer) { // it has closed the pipe, so it is about to end
        awaitEnd();
    }
    return answer && !answer->empty() ? answer : std::nullopt;
}

bool BoundedChild::isBusy() {
    if (m_child != 0 && ::waitpid(m_child, nullptr, WNOHANG) != 0) {
        m_child = 0; // collected, or somebody else's by now
    }
    return m_child != 0;
}

/// A tenth of a second at most.
void BoundedChild::awaitEnd() {
    for (int tries = 0; tries < 100 && isBusy(); ++tries) {
        ::poll(nullptr, 0, 1);
    }
}

BoundedChild::~BoundedChild() {
    if (isBusy()) {
        ::kill(m_child, SIGKILL);
        awaitEnd();
    }
}

std::optional<std::string> runInChild(const std::function<std::string()>& work,
                                      std::chrono::milliseconds limit) {
    return BoundedChild().run(work, limit);
}

} // namespace vantor::platform::posix
