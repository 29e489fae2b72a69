// SPDX-License-Identifier: MIT
#pragma once

#include "metrics/CpuStatus.hpp"
#include "pages/ApplicationProcesses.hpp"
#include "pages/MemoryPage.hpp"
#include "pages/ProcessorPage.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vantor::hosts::app {

enum class PageKind : std::uint8_t { memory, storage, processor, settings };
inline constexpr std::size_t pageCount = 4;

/// What is behind applications, by their rows' keys.
using Unfolded = std::map<std::string, ApplicationProcesses>;

/// What one look is to be at: a page, and behind some of its applications, by their rows' keys.
struct Question {
    PageKind page = PageKind::memory;
    std::set<std::string> unfolded = {};
};

/// What one look at the machine gave. A fraction is what a ring shows; absent where it cannot be told.
struct Sample {
    std::optional<double> memory;
    std::optional<double> storage;
    std::optional<double> processor;
    std::vector<CpuUsage> minute;               ///< of the last minute, the oldest first
    std::optional<MemoryPage> memoryPage;       ///< only while that page is shown
    std::optional<ProcessorPage> processorPage; ///< the same; absent at first, until there is an interval
    std::optional<ProcessorPage>
        processorStart; ///< instead of it at first: what is known without an interval
    Unfolded unfolded;  ///< what is behind the applications that were asked for
};

/// Looks at the machine on a worker: at the few figures that the rings need, and at all that the shown page
/// is made of. A new look waits for the one before. Main thread.
class Sampler {
public:
    using Heard = std::function<void(const Sample&)>;

    /// `heard` hears each sample in a turn of the main loop. `clock` tells how long an interval was.
    explicit Sampler(Heard heard, ProcessorPageSampler::Clock clock = std::chrono::steady_clock::now);
    ~Sampler();
    Sampler(const Sampler&) = delete;
    Sampler& operator=(const Sampler&) = delete;

    /// Takes a sample. While one is being taken, the wish for another is kept and done after it.
    void take(const Question& question);
    /// A pause begins: no share and no minute is to cover it.
    void forget();

private:
    struct Memory;
    void start(const Question& question);

    Heard m_heard;
    std::shared_ptr<Memory> m_memory; ///< of the worker; shared with one that outlives this
    std::shared_ptr<bool> m_alive;
    std::optional<Question> m_next;
    bool m_isBusy = false;
};

} // namespace vantor::hosts::app
