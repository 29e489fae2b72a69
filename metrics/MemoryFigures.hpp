// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {

/// The memory figure dictionary: byte counts under fixed text keys, in the order in which they were made.
/// Empty when the kernel gave no record. A flat list: ten keys are found faster by looking than by hashing,
/// in one allocation.
class MemoryFigures {
public:
    using Entry = std::pair<std::string_view, std::int64_t>; // the keys are literals

    MemoryFigures() = default;
    MemoryFigures(std::initializer_list<Entry> entries) : m_entries(entries) {}

    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] auto begin() const { return m_entries.begin(); }
    [[nodiscard]] auto end() const { return m_entries.end(); }

    [[nodiscard]] std::optional<std::int64_t> find(std::string_view key) const;
    /// The figure under a key that must be there; a missing one is fatal.
    [[nodiscard]] std::int64_t at(std::string_view key) const;

    bool operator==(const MemoryFigures&) const = default;

private:
    std::vector<Entry> m_entries;
};

} // namespace vantor
