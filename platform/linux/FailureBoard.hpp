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
    /// Notes that a source cannot be read, and why, in English; the latest reason stands.
    void fail(Source source, std::string reason);
    /// The source could be read again.
    void clear(Source source);
    /// The sources that fail now, in the order of the sections.
    [[nodiscard]] std::vector<SourceFailure> list() const;

private:
    /// One bit a source, so that `clear` takes no lock where nothing failed: a refresh calls it some fifteen
    /// times.
    std::atomic<unsigned> m_failing{0};
    mutable std::mutex m_mutex;
    std::array<std::optional<std::string>, allSources.size()> m_reasons;
};

} // namespace vantor::platform::linux
