// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/SysctlQuery.hpp"

#include <vector>

namespace vantor::SystemValues {

std::optional<std::string> querySysctlText(const std::string& key) {
    if (std::optional<std::string> stored = SysctlQueryStorage::recovered(key)) {
        return stored;
    }
    std::size_t size = 0;
    if (!isWholeKey(key) || platform::sysctlbyname(key.c_str(), nullptr, &size, nullptr, 0) != 0) {
        return std::nullopt; // the store keeps what it had
    }
    std::vector<char> buffer(size + 1, '\0'); // one more than was asked for, so that a NUL always ends it
    std::optional<std::string> result;
    if (platform::sysctlbyname(key.c_str(), buffer.data(), &size, nullptr, 0) == 0) {
        result = PackagesBase::repairedUtf8(buffer.data());
    }
    SysctlQueryStorage::storeText(key, result);
    return result;
}

} // namespace vantor::SystemValues
