// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace vantor {

/// Deletes caches that come back. What is shown before and what is deleted is one list: what is written
/// meanwhile stays, and so does what was exchanged meanwhile. Any thread.
class ReleaseCaches {
public:
    /// Takes caches as they were listed, by a page for one; those that are kept or in use are left out.
    explicit ReleaseCaches(std::vector<platform::CacheItem> listed);

    [[nodiscard]] const std::vector<platform::CacheItem>& items() const { return m_items; }
    /// The sum of the list, in bytes.
    [[nodiscard]] std::uint64_t bytes() const;

    /// Deletes the list. `keepGoing` is asked before each entry; what was deleted by then is gone.
    [[nodiscard]] Released run(const platform::Disposal::KeepGoing& keepGoing) const;

private:
    std::vector<platform::CacheItem> m_items;
};

} // namespace vantor
