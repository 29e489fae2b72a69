// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

/// A program that was started by its path: without a shell, with the standard streams on /dev/null, in a
/// process group of its own, with no signal blocked or ignored. Once `wait` has said how it ended, no zombie
/// is left of it. One thread at a time.
class ChildProcess {
public:
    enum class Output : std::uint8_t { dropped, read };

    /// Absent where it cannot be started.
    static std::optional<ChildProcess> start(const std::string& program,
                                             const std::vector<std::string>& arguments, Output output);

    [[nodiscard]] pid_t number() const { return m_number; }
    /// The beginning of what it wrote to standard output until it closed that; absent when it has not within
    /// `patience`. Only with `Output::read`.
    [[nodiscard]] std::optional<std::string> readOutput(std::chrono::milliseconds patience) const;
    /// Waits for its end: whether it ended well; absent when it still runs after `patience`. On kernels
    /// before 5.3 the wait lasts until the end.
    [[nodiscard]] std::optional<bool> wait(std::chrono::milliseconds patience) const;
    /// Waits until it has ended, however long that takes.
    void waitForEnd() const { (void)wait(std::chrono::milliseconds::max()); }

private:
    ChildProcess(pid_t number, platform::posix::Descriptor output)
        : m_number(number), m_output(std::move(output)) {}

    pid_t m_number;
    platform::posix::Descriptor m_output;
};

} // namespace vantor::hosts::common
