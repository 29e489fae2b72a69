// SPDX-License-Identifier: MIT
#include "actions/EmptyTrash.hpp"

namespace vantor {

using platform::Disposal;
using platform::TrashItem;

EmptyTrash::EmptyTrash(std::optional<std::int64_t> before, const Disposal::KeepGoing& keepGoing)
    : m_contents(platform::currentDisposal().trashItems(keepGoing)) {
    if (before) {
        std::erase_if(m_contents.items,
                      [&](const TrashItem& item) { return !item.trashed || *item.trashed >= *before; });
    }
}

std::uint64_t EmptyTrash::bytes() const {
    std::uint64_t sum = 0;
    for (const TrashItem& item : m_contents.items) {
        sum += item.bytes;
    }
    return sum;
}

Released EmptyTrash::run(const Disposal::KeepGoing& keepGoing) const {
    std::vector<Deletion> deletions;
    deletions.reserve(m_contents.items.size());
    for (const TrashItem& item : m_contents.items) {
        deletions.push_back({item.trash, [&item, &keepGoing] {
                                 return platform::currentDisposal().remove(item, keepGoing);
                             }});
    }
    return release(deletions, keepGoing);
}

} // namespace vantor
