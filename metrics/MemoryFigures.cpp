// SPDX-License-Identifier: MIT
#include "metrics/MemoryFigures.hpp"

#include "platform/core/FatalStop.hpp"

#include <algorithm>
#include <string>

namespace vantor {

std::optional<std::int64_t> MemoryFigures::find(std::string_view key) const {
    const auto entry = std::ranges::find(m_entries, key, &Entry::first);
    return entry == m_entries.end() ? std::nullopt : std::optional(entry->second);
}

std::int64_t MemoryFigures::at(std::string_view key) const {
    const std::optional<std::int64_t> figure = find(key);
    if (!figure) {
        platform::fatalStop("no memory figure under the key \"" + std::string(key) + '"');
    }
    return *figure;
}

} // namespace vantor
