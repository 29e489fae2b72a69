// SPDX-License-Identifier: MIT
#include "platform/foundation/NSFileManager.hpp"

#include "platform/machine/Machine.hpp"

namespace vantor::platform {

std::optional<NSURLResourceValues>
NSFileURL::resourceValuesForKeys(std::initializer_list<NSURLResourceKey> keys) const {
    const std::optional<VolumeCapacities> capacities = currentMachine().volumeCapacities(*m_path);
    if (!capacities) {
        return std::nullopt;
    }
    const std::array known{capacities->total, capacities->available, capacities->availableForImportantUsage};
    NSURLResourceValues values;
    for (const NSURLResourceKey key : keys) {
        values.m_values[key] = known[key];
    }
    values.m_reserved = capacities->reserved;
    return values;
}

std::vector<NSFileURL> NSFileManager::URLsForDirectory(NSSearchPathDirectory /*directory*/,
                                                       NSSearchPathDomainMask /*domainMask*/) const {
    const std::shared_ptr<const std::vector<std::string>> paths = currentMachine().documentDirectories();
    std::vector<NSFileURL> urls;
    urls.reserve(paths->size());
    for (const std::string& path : *paths) {
        urls.emplace_back(std::shared_ptr<const std::string>(paths, &path));
    }
    return urls;
}

} // namespace vantor::platform
