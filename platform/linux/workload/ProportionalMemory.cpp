// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ProportionalMemory.hpp"

#include <algorithm>
#include <optional>
#include <string>

namespace vantor::platform::linux {

namespace {

constexpr std::chrono::seconds freshness{30}, freshnessAtRest{300};

/// Whether it holds much the same as when it was counted.
bool isAtRest(std::uint64_t then, std::uint64_t now) {
    return (now > then ? now - then : then - now) <= then / 16;
}

/// What was counted, moved by the difference of what the process holds; never more than it holds.
std::uint64_t moved(std::uint64_t counted, std::uint64_t then, std::uint64_t now) {
    const std::uint64_t grown = counted + (now > then ? now - then : 0);
    const std::uint64_t shrunk = then > now ? then - now : 0;
    return std::min(grown > shrunk ? grown - shrunk : 0, now);
}

} // namespace

std::chrono::steady_clock::time_point ProportionalMemory::Entry::due() const {
    const bool rests = isKnown && isAtRest(residentThen.memory, resident.memory) &&
                       isAtRest(residentThen.swap, resident.swap);
    return time + (rests ? freshnessAtRest : freshness);
}

void ProportionalMemory::beginRound() {
    const std::scoped_lock lock(m_mutex);
    std::erase_if(m_entries, [this](const auto& entry) { return entry.second.round != m_round; });
    ++m_round;
}

ProcessMemory ProportionalMemory::of(int process, std::uint64_t start, const ProcessMemory& resident) {
    constexpr std::uint64_t worthwhile = std::uint64_t{1} << 19;
    const std::scoped_lock lock(m_mutex);
    auto known = m_entries.find({process, start});
    if (known == m_entries.end()) {
        if (resident.memory + resident.swap < worthwhile) {
            return resident;
        }
        known = m_entries.try_emplace({process, start}).first;
    }
    Entry& entry = known->second;
    entry.resident = resident;
    entry.round = m_round;
    if (!entry.isKnown) {
        return resident;
    }
    return {moved(entry.counted.memory, entry.residentThen.memory, resident.memory),
            moved(entry.counted.swap, entry.residentThen.swap, resident.swap)};
}

bool ProportionalMemory::wantsCount() {
    const std::scoped_lock lock(m_mutex);
    return m_round > 1 && !m_entries.empty() && !m_isCounting;
}

std::optional<ProportionalMemory::Key> ProportionalMemory::next() {
    const std::scoped_lock lock(m_mutex);
    const auto now = m_clock();
    const auto isBefore = [](const auto& a, const auto& b) {
        if (a.second.wasCounted != b.second.wasCounted) {
            return b.second.wasCounted;
        }
        return a.second.wasCounted ? a.second.due() < b.second.due()
                                   : a.second.resident.memory > b.second.resident.memory;
    };
    const auto found = std::ranges::min_element(m_entries, isBefore);
    const bool isDue = found != m_entries.end() && (!found->second.wasCounted || now >= found->second.due());
    m_isCounting = isDue;
    if (!isDue) {
        return std::nullopt;
    }
    found->second.wasCounted = true; // also one that cannot be: it waits for its turn
    found->second.time = now;
    return found->first;
}

void ProportionalMemory::countFew() {
    constexpr int most = 5;
    constexpr std::chrono::milliseconds enough{20};
    const auto end = m_clock() + enough;
    for (int i = 0; i < most && m_clock() < end; ++i) {
        const std::optional<Key> key = next();
        if (!key) {
            break;
        }
        const auto counted =
            parseProportionalMemory(m_tree.read("proc/" + std::to_string(key->first) + "/smaps_rollup").text);
        const std::scoped_lock lock(m_mutex);
        if (const auto entry = m_entries.find(*key); entry != m_entries.end() && counted) {
            entry->second.counted = *counted;
            entry->second.residentThen = entry->second.resident;
            entry->second.isKnown = true;
        }
    }
    const std::scoped_lock lock(m_mutex);
    m_isCounting = false;
}

} // namespace vantor::platform::linux
