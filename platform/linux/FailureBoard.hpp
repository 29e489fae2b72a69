// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Source.hpp"

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::linux {

/// Which sources cannot be read at the moment. Any thread.
class FailureBoard {
public:
    void fail(Source source, std::string reason);
    /// For a reader that found no memory left: takes none itself.
    void failForMemory(Source source) { fail(source, "out of memory"); }
    void clear(Source source);
    [[nodiscard]] std::vector<SourceFailure> list() const;

private:
    /// One bit a source: a refresh clears some fifteen times what nearly always is clear.
    std::atomic<unsigned> m_failing{0};
    mutable std::mutex m_mutex;
    std::array<std::optional<std::string>, allSources.size()> m_reasons;
};

} // namespace vantor::platform::linux
