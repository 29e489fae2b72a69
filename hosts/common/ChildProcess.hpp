// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace vantor::hosts::common {

/// A program that was started by its path: without a shell, with the standard streams on /dev/null, in a
/// process group of its own, with no signal blocked or ignored. Once `wait` has said how it ended, no zombie
/// is left of it. One thread at a time.
class ChildProcess {
public:
    /// Absent where it cannot be started. The environment is handed in, not looked up: another thread may be
    /// setting a variable.
    static std::optional<ChildProcess> start(const std::string& program,
                                             const std::vector<std::string>& arguments,
                                             const std::vector<std::string>& environment);

    [[nodiscard]] pid_t number() const { return m_number; }
    /// Waits for its end: whether it ended well; absent when it still runs after `patience`. On kernels
    /// before 5.3 the wait lasts until the end.
    [[nodiscard]] std::optional<bool> wait(std::chrono::milliseconds patience) const;
    /// Waits until it has ended, however long that takes.
    void waitForEnd() const { (void)wait(std::chrono::milliseconds::max()); }

private:
    explicit ChildProcess(pid_t number) : m_number(number) {}

    pid_t m_number;
};

} // namespace vantor::hosts::common
