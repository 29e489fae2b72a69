// SPDX-License-Identifier: MIT
#include "actions/ReleaseCaches.hpp"

#include <utility>

namespace vantor {

using platform::CacheItem;

ReleaseCaches::ReleaseCaches(std::vector<CacheItem> listed) : m_items(std::move(listed)) {
    std::erase_if(m_items, [](const CacheItem& item) { return !item.isReleasable(); });
}

std::uint64_t ReleaseCaches::bytes() const {
    std::uint64_t sum = 0;
    for (const CacheItem& item : m_items) {
        sum += item.bytes;
    }
    return sum;
}

Released ReleaseCaches::run(const platform::Disposal::KeepGoing& keepGoing) const {
    std::vector<Deletion> deletions;
    for (const CacheItem& item : m_items) {
        const std::string above = item.folder.substr(0, item.folder.find_last_of('/') + 1);
        deletions.push_back(
            {above, [&item, &keepGoing] { return platform::currentDisposal().remove(item, keepGoing); }});
    }
    return release(deletions, keepGoing);
}

} // namespace vantor
