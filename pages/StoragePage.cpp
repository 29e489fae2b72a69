// SPDX-License-Identifier: MIT
#include "pages/StoragePage.hpp"

#include "metrics/DiskStatus.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vantor {

namespace {

using platform::CacheItem;
using platform::CacheKind;

bool isSuggested(const CacheItem& item, std::int64_t now) {
    constexpr std::int64_t day = 86'400;
    constexpr std::int64_t ninetyDays = 90 * day;
    const bool isOld = item.newest && now - *item.newest >= ninetyDays;
    return isOld && item.kind == CacheKind::harmless && item.isReleasable();
}

} // namespace

std::optional<VolumeFigures> volumeFigures() {
    VolumeFigures figures;
    const DiskStatus::Total total = DiskStatus::getTotalAndReservedDiskSpace();
    figures.total = total.total;
    figures.reserved = total.reserved;
    if (figures.total <= 0) {
        return std::nullopt;
    }
    figures.used = std::clamp<std::int64_t>(DiskStatus::getUsedDiskSpace(), 0, figures.total);
    figures.releasable =
        std::clamp<std::int64_t>(DiskStatus::getReleasableDiskSpace(), 0, figures.total - figures.used);
    figures.available = figures.total - figures.used - figures.releasable;
    figures.free = DiskStatus::getFreeDiskSpace();
    return figures;
}

std::int64_t StoragePage::offered() const {
    std::int64_t sum = trash;
    for (const CacheRow& row : caches) {
        sum += row.item.isReleasable() ? static_cast<std::int64_t>(row.item.bytes) : 0;
    }
    return sum;
}

std::optional<StoragePage> storagePage(std::int64_t now, const platform::Disposal::KeepGoing& keepGoing) {
    platform::Disposal& disposal = platform::currentDisposal();
    // First, so that the figures are made of this count.
    platform::ReleasableParts parts = disposal.releasableParts(keepGoing);
    const std::optional<VolumeFigures> figures = volumeFigures();
    if (!figures) {
        return std::nullopt;
    }
    StoragePage page;
    page.figures = *figures;
    page.isWhole = parts.isWhole;
    page.trash = static_cast<std::int64_t>(parts.trash);
    page.rest = page.figures.releasable - static_cast<std::int64_t>(parts.bytes());
    for (CacheItem& item : parts.caches) {
        const bool suggested = isSuggested(item, now);
        page.caches.push_back({std::move(item), suggested});
    }
    std::ranges::sort(page.caches, [](const CacheRow& a, const CacheRow& b) {
        return std::tuple(a.item.kind == CacheKind::kept, b.item.bytes, a.item.name) <
               std::tuple(b.item.kind == CacheKind::kept, a.item.bytes, b.item.name);
    });
    page.system = disposal.systemCaches();
    return page;
}

} // namespace vantor
