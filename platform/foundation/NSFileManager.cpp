// SPDX-License-Identifier: MIT
#include "platform/foundation/NSFileManager.hpp"

#include "platform/machine/Machine.hpp"

namespace vantor::platform {

std::optional<NSURLResourceValues>
NSFileURL::resourceValuesForKeys(std::initializer_list<NSURLResourceKey> keys) const {
    const std::optional<VolumeCapacities> capacities = currentMachine().volumeCapacities(m_path);
    if (!capacities) {
        return std::nullopt;
    }
    const std::array known{capacities->total, capacities->available, capacities->availableForImportantUsage};
    NSURLResourceValues values;
    for (const NSURLResourceKey key : keys) {
        values.m_values[key] = known[key];
    }
    return values;
}

std::vector<NSFileURL> NSFileManager::URLsForDirectory(NSSearchPathDirectory /*directory*/,
                                                       NSSearchPathDomainMask /*domainMask*/) const {
    std::vector<NSFileURL> urls;
    for (std::string& path : currentMachine().documentDirectories()) {
        urls.emplace_back(std::move(path));
    }
    return urls;
}

} // namespace vantor::platform
