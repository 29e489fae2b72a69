// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace vantor::platform::posix {

/// Does in a child process what may hang or break: a call that waits for a server which went away leaves a
/// thread in the kernel that nothing ends, and that keeps its whole process from ending. Of a child it keeps
/// only the child. The child is a copy of this process with one thread: no shell and no other program is
/// involved. It has none of this process's descriptors, standard streams that lead nowhere, and no handler
/// for a signal, and ends with the thread that started it. At most one runs at a time. Not for several
/// threads at once.
class BoundedChild {
public:
    BoundedChild() = default;
    /// Ends a child that still runs. One that hangs in the kernel ends when it can; nobody waits for it.
    ~BoundedChild();
    BoundedChild(const BoundedChild&) = delete;
    BoundedChild& operator=(const BoundedChild&) = delete;

    /// The bytes that `work` returned there, two megabytes at most. Absent where it crashes, gives nothing or
    /// takes longer than `limit`: then the child goes on, and what it says late is dropped. Absent at once
    /// while one of an earlier call still runs, and where no process is to be had.
    [[nodiscard]] std::optional<std::string> run(const std::function<std::string()>& work,
                                                 std::chrono::milliseconds limit);
    /// Whether the child of an earlier call still runs.
    [[nodiscard]] bool isBusy();
    /// Its number; 0 where none runs.
    [[nodiscard]] pid_t number() const { return m_child; }

private:
    void awaitEnd();

    pid_t m_child = 0; ///< 0: none runs
};

/// `BoundedChild::run` once: a child that takes longer than `limit` is ended.
[[nodiscard]] std::optional<std::string> runInChild(const std::function<std::string()>& work,
                                                    std::chrono::milliseconds limit);

} // namespace vantor::platform::posix
