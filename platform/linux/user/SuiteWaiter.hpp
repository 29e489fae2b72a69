// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/BoundedChild.hpp"
#include "platform/viewer/SuiteFile.hpp"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Reads a preference file whose file system may not answer, such as that of a home on a network, in a child
/// process: whoever asks waits a second at most, and while that child hangs not at all. Any thread; a second
/// caller waits for the first.
class SuiteWaiter {
public:
    static constexpr std::chrono::milliseconds limit{1000};
    /// The readers of one refresh follow each other closely: what the first of them got is good for all.
    static constexpr std::chrono::milliseconds fresh{100};

    /// As `readSuiteFile`; a file that nobody can get at counts as there and unusable.
    [[nodiscard]] SuiteFile read(const std::string& path);

private:
    std::mutex m_mutex;
    posix::BoundedChild m_child;
    std::optional<std::chrono::steady_clock::time_point> m_asked;
    SuiteFile m_latest;
};

} // namespace vantor::platform::linux
