// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/SuiteFile.hpp"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// A preference file with what was read of it last, which holds for as long as statx(2) finds the same file
/// of the same size, written and changed at the same times. Times tell two writings apart only where the
/// clock that stamps them has moved on in between: a file that was young when it was read is read again. For
/// local file systems, where the answer is never an old one. Any thread.
class KeptSuite {
public:
    using Time = std::chrono::nanoseconds;

    explicit KeptSuite(std::string path) : m_path(std::move(path)) {}

    [[nodiscard]] const std::string& path() const { return m_path; }

    /// The file now; the same object while it is known to be unchanged. `now` is the time since 1970.
    [[nodiscard]] std::shared_ptr<const SuiteFile> read(Time now);

private:
    /// What tells a file's content from another one's.
    struct State {
        std::uint64_t device, inode, size;
        std::uint16_t mode;
        Time written, changed;
        bool operator==(const State&) const = default;
    };
    struct Kept {
        State state;
        std::shared_ptr<const SuiteFile> file;
    };
    [[nodiscard]] int look(std::optional<State>& state) const;
    [[nodiscard]] static bool isSettled(const State& state, Time now);

    const std::string m_path;
    std::mutex m_mutex;
    std::optional<Kept> m_kept;
};

} // namespace vantor::platform::linux
