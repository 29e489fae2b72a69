// SPDX-License-Identifier: MIT
#include "platform/linux/MemoryReader.hpp"

#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

namespace {
/// The text has some 60 lines of at most 28 bytes; what comes after this much is none of ours.
constexpr std::size_t memInfoLength = 16384;
} // namespace

MemoryReader::MemoryReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options),
      m_failures(failures),
      m_memInfo(options.tree.path("proc/meminfo"), Shape::oneRecord),
      m_minFree(options.tree.path("proc/sys/vm/min_free_kbytes"), Shape::oneRecord),
      m_zram(options.tree),
      m_arc(options.tree) {}

/// The low watermark is a quarter above the least that the kernel keeps free (in KiB; Linux,
/// mm/page_alloc.c).
std::uint64_t MemoryReader::lowWatermark() {
    std::string_view text = m_minFree.read(64).text;
    const std::optional<Line> line = takeLine(text);
    const std::uint64_t kibibytes = line && line->ended ? numberFrom(line->text).value_or(0) : 0;
    constexpr std::uint64_t most = std::uint64_t{1} << 40;
    return kibibytes > most ? 0 : kibibytes * 1024 * 5 / 4;
}

std::optional<MemorySplit> MemoryReader::readFiles() {
    const KernelFile::Content content = m_memInfo.read(memInfoLength);
    if (content.error != 0) {
        m_failures.fail(Source::memory, m_memInfo.reason(content.error));
        return std::nullopt;
    }
    const MemInfo info = parseMemInfo(content.text);
    const std::chrono::nanoseconds now = m_options.clock();
    const std::optional<MemorySplit> figures =
        memorySplit(info, {.zramUsed = m_zram.used(now),
                           .lowWatermark = info.memAvailable ? 0 : lowWatermark(),
                           .arc = m_arc.read(now)});
    if (!figures) {
        m_failures.fail(Source::memory, m_memInfo.path() + ": does not tell the total and the free memory");
    }
    return figures;
}

std::optional<MemorySplit> MemoryReader::readLocked() {
    if (const std::optional<MemorySplit> figures = readFiles()) {
        m_failures.clear(Source::memory);
        m_last = figures;
    } else if (const std::optional<PlainMemory> plain = m_options.plainMemory();
               plain && plain->total > 0 && plain->free <= plain->total) {
        m_last = MemorySplit{.total = plain->total, .free = plain->free};
    }
    return m_last;
}

std::optional<MemorySplit> MemoryReader::read() {
    const std::lock_guard lock(m_mutex);
    return readLocked();
}

std::uint64_t MemoryReader::total() {
    const std::lock_guard lock(m_mutex);
    return m_last || readLocked() ? m_last->total : 0;
}

} // namespace vantor::platform::linux
