// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>
#include <vector>

namespace vantor::platform::remote {

/// Where the entry of a key is in a list that holds the keys. A refresh looks ten thousand keys up for each
/// figure: the slots lie side by side with their hashes, so that a look is a miss of the cache or two.
class KeyIndex {
public:
    static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

    /// `keyAt(place)` is the key of the entry there.
    template<class KeyAt>
    [[nodiscard]] std::uint32_t find(std::string_view key, const KeyAt& keyAt) const {
        const std::size_t hash = std::hash<std::string_view>()(key);
        for (std::size_t i = hash; !m_slots.empty(); ++i) {
            const Slot& slot = m_slots[i & (m_slots.size() - 1)];
            if (slot.place == none || (slot.hash == hash && keyAt(slot.place) == key)) {
                return slot.place;
            }
        }
        return none;
    }
    /// For a key that is not in it, whose entry is the last.
    void add(std::string_view key) {
        if (2 * (std::size_t{m_size} + 1) > m_slots.size()) {
            grow();
        }
        put({std::hash<std::string_view>()(key), m_size++});
    }
    void clear() {
        m_slots.clear();
        m_size = 0;
    }

private:
    struct Slot {
        std::size_t hash = 0;
        std::uint32_t place = none;
    };

    void grow() {
        constexpr std::size_t least = 64; // a power of two, as all that follow
        std::vector<Slot> before(m_slots.empty() ? least : 2 * m_slots.size());
        before.swap(m_slots);
        for (const Slot& slot : before) {
            if (slot.place != none) {
                put(slot);
            }
        }
    }
    void put(const Slot& slot) {
        std::size_t i = slot.hash;
        while (m_slots[i & (m_slots.size() - 1)].place != none) {
            ++i;
        }
        m_slots[i & (m_slots.size() - 1)] = slot;
    }

    std::vector<Slot> m_slots; ///< at most half of them taken
    std::uint32_t m_size = 0;
};

} // namespace vantor::platform::remote
