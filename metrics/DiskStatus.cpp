// SPDX-License-Identifier: MIT
#include "metrics/DiskStatus.hpp"

#include "platform/core/Checked.hpp"
#include "platform/foundation/NSFileManager.hpp"
#include "platform/foundation/NSProcessInfo.hpp"
#include "settings/SharedStore.hpp"

#include <initializer_list>
#include <optional>

namespace vantor {

namespace {

using platform::checkedAdd;
using platform::checkedSubtract;
using platform::NSURLResourceKey;
using platform::NSURLResourceValues;

constexpr std::string_view usedOverflow = "the used storage overflows";

std::optional<NSURLResourceValues> documentVolume(std::initializer_list<NSURLResourceKey> keys) {
    const auto folders = platform::NSFileManager::defaultManager().URLsForDirectory(
        platform::NSDocumentDirectory, platform::NSUserDomainMask);
    return folders.empty() ? std::nullopt : folders.front().resourceValuesForKeys(keys);
}

std::optional<NSURLResourceValues> bothCapacities() {
    return documentVolume({platform::NSURLVolumeAvailableCapacityForImportantUsageKey,
                           platform::NSURLVolumeAvailableCapacityKey});
}

bool isOnMac() {
    return platform::NSProcessInfo::processInfo().isiOSAppOnMac();
}

std::int64_t mandatory(const std::optional<std::int64_t>& capacity, std::string_view what) {
    if (!capacity) {
        platform::fatalStop(what);
    }
    return *capacity;
}

} // namespace

std::int64_t DiskStatus::getTotalDiskSpace() {
    return getTotalAndReservedDiskSpace().total;
}

DiskStatus::Total DiskStatus::getTotalAndReservedDiskSpace() {
    const auto values = documentVolume({platform::NSURLVolumeTotalCapacityKey});
    return values ? Total{values->objectForKey(platform::NSURLVolumeTotalCapacityKey).value_or(0),
                          values->reservedCapacity().value_or(0)}
                  : Total{};
}

std::int64_t DiskStatus::getFreeDiskSpace() {
    const auto values = bothCapacities();
    if (!values) {
        return 0;
    }
    const bool plainly = !isOnMac() && sharedFlag(SettingsKey::isReleasableSTORAGEShow);
    const NSURLResourceKey key = plainly ? platform::NSURLVolumeAvailableCapacityKey
                                         : platform::NSURLVolumeAvailableCapacityForImportantUsageKey;
    return values->objectForKey(key).value_or(0);
}

std::int64_t DiskStatus::getReleasableDiskSpace() {
    const auto values = bothCapacities();
    if (!values) {
        return 0;
    }
    const std::int64_t important =
        mandatory(values->objectForKey(platform::NSURLVolumeAvailableCapacityForImportantUsageKey),
                  "the volume's answer lacks the capacity for important usage");
    const std::int64_t available = mandatory(values->objectForKey(platform::NSURLVolumeAvailableCapacityKey),
                                             "the volume's answer lacks the available capacity");
    return checkedSubtract(important, available, "the releasable storage overflows");
}

std::int64_t DiskStatus::getUsedDiskSpace() {
    if (isOnMac()) {
        const std::int64_t total = getTotalDiskSpace();
        const std::int64_t occupied = checkedSubtract(total, getFreeDiskSpace(), usedOverflow);
        return checkedAdd(occupied, getReleasableDiskSpace(), usedOverflow);
    }
    const bool releasableApart = sharedFlag(SettingsKey::isReleasableSTORAGEShow);
    const std::int64_t total = getTotalDiskSpace();
    const std::int64_t occupied = checkedSubtract(total, getFreeDiskSpace(), usedOverflow);
    return releasableApart ? checkedSubtract(occupied, getReleasableDiskSpace(), usedOverflow) : occupied;
}

} // namespace vantor
