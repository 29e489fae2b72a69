// SPDX-License-Identifier: MIT
#include "actions/EmptyTrash.hpp"

#include <map>
#include <set>

namespace vantor {

using platform::Disposal;
using platform::TrashItem;

namespace {

/// What is available on each volume that these items' trashes are on; absent where one does not say.
std::optional<std::map<std::uint64_t, std::uint64_t>> available(const std::vector<TrashItem>& items) {
    std::map<std::uint64_t, std::uint64_t> volumes;
    std::set<std::string> trashes;
    for (const TrashItem& item : items) {
        if (!trashes.insert(item.trash).second) {
            continue;
        }
        const std::optional<platform::VolumeSpace> volume = platform::currentDisposal().volumeOf(item.trash);
        if (!volume) {
            return std::nullopt;
        }
        volumes[volume->device] = volume->available;
    }
    return volumes;
}

} // namespace

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

TrashEmptied EmptyTrash::run(const Disposal::KeepGoing& keepGoing) const {
    TrashEmptied result;
    const auto before = available(m_contents.items);
    for (const TrashItem& item : m_contents.items) {
        if (!keepGoing()) {
            result.problems.emplace_back("The work was stopped; what is left is still in the trash.");
            break;
        }
        const platform::Removal removal = platform::currentDisposal().remove(item, keepGoing);
        result.bytes += removal.bytes;
        result.items += removal.problem.empty() ? 1 : 0;
        if (!removal.problem.empty()) {
            result.problems.push_back(removal.problem);
        }
    }
    const auto after = available(m_contents.items);
    result.gained = before && after ? std::optional<std::uint64_t>(0) : std::nullopt;
    for (const auto& [device, now] : result.gained ? *after : std::map<std::uint64_t, std::uint64_t>()) {
        const auto then = before->find(device);
        *result.gained += then != before->end() && now > then->second ? now - then->second : 0;
    }
    return result;
}

} // namespace vantor
