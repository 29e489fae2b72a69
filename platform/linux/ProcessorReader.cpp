// SPDX-License-Identifier: MIT
#include "platform/linux/ProcessorReader.hpp"

#include <algorithm>

namespace vantor::platform::linux {

namespace {
/// The first line holds ten numbers of at most 20 digits. The kernel formats the whole file for each read,
/// but copies only what is asked for.
constexpr std::size_t firstLine = 256;
constexpr std::size_t allProcessors = std::size_t{1} << 20;
constexpr std::chrono::milliseconds oneWait{5};
constexpr int waits = 4;
/// The ticks of any machine move within this: what a processor does not work it idles.
constexpr std::chrono::seconds longestStandstill{1};
} // namespace

ProcessorReader::ProcessorReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options),
      m_failures(failures),
      m_stat(options.tree.path("proc/stat"), Shape::oneRecord),
      m_account(options.ticksPerSecond) {}

std::optional<ProcessorTimes> ProcessorReader::readTimes() {
    const KernelFile::Content content = m_stat.read(firstLine);
    if (content.error != 0) {
        m_failures.fail(Source::processor, m_stat.reason(content.error));
        return std::nullopt;
    }
    const std::optional<ProcessorTimes> times = parseProcStat(content.text);
    if (!times) {
        m_failures.fail(Source::processor, m_stat.path() + ": does not begin with the processors' ticks");
        return std::nullopt;
    }
    return times;
}

/// A reading that differs from the last one, if the machine gives one within the wait.
std::optional<ProcessorTimes> ProcessorReader::readMovedTimes() {
    std::optional<ProcessorTimes> times = readTimes();
    for (int i = 0; i < waits && times && times == m_lastTimes; ++i) {
        m_options.pause(oneWait);
        times = readTimes();
    }
    return times;
}

/// Some containers show a file of zeros, or one that was written once; all that time would count as idle.
void ProcessorReader::judge(const ProcessorTimes& times, std::chrono::nanoseconds now) {
    const bool moved = m_lastTimes ? times != *m_lastTimes : sum(times) > 0;
    if (moved) {
        m_lastMoved = now;
        m_failures.clear(Source::processor);
    } else if (!m_lastMoved || now - *m_lastMoved >= longestStandstill) {
        m_failures.fail(Source::processor, m_stat.path() + ": the ticks stand still");
    }
}

/// What passed since the last reading. Where that had to be mended because processors came, what they did is
/// judged once more by their number.
ProcessorTimes ProcessorReader::passedSince(const ProcessorTimes& times, std::chrono::nanoseconds now) {
    TickAccount before = m_account;
    ProcessorTimes passed = m_account.advance(times, now, m_processors);
    if (m_account.wasMended()) {
        const std::size_t processors = m_processors;
        countOnline();
        if (m_processors > processors) {
            m_account = before;
            passed = m_account.advance(times, now, m_processors);
        }
    }
    return passed;
}

void ProcessorReader::countOnline() {
    m_processors = std::max<std::size_t>(1, countProcessors(m_stat.read(allProcessors).text));
}

host_cpu_load_info ProcessorReader::read() {
    const std::lock_guard lock(m_mutex);
    const std::optional<ProcessorTimes> times = readMovedTimes();
    if (m_processors == 0) {
        countOnline();
    }
    const std::chrono::nanoseconds now = m_options.clock();
    const std::chrono::nanoseconds elapsed = m_lastAnswer ? now - *m_lastAnswer : std::chrono::nanoseconds(0);
    ProcessorTimes passed;
    if (times) {
        judge(*times, now);
        passed = passedSince(*times, now);
        m_lastTimes = times;
    }
    if (sum(passed) == 0) {
        passed.idle = m_account.ticks(elapsed, m_processors);
    }
    m_lastAnswer = now;
    return m_scale.add(passed, elapsed);
}

} // namespace vantor::platform::linux
