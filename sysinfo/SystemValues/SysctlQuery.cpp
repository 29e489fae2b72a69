// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/SysctlQuery.hpp"

#include "platform/sysctl/sysctlbyname.hpp"

#include <vector>

namespace vantor::SystemValues {

namespace {

/// A name with a NUL inside would reach the kernel cut short, as another key.
bool isWhole(const std::string& key) {
    return key.find('\0') == std::string::npos;
}

} // namespace

std::optional<std::string> querySysctlText(const std::string& key) {
    if (std::optional<std::string> stored = SysctlQueryStorage::recovered(key)) {
        return stored;
    }
    std::size_t size = 0;
    if (!isWhole(key) || platform::sysctlbyname(key.c_str(), nullptr, &size, nullptr, 0) != 0) {
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

bool readSysctlNumber(const std::string& key, void* value, std::size_t size) {
    return isWhole(key) && platform::sysctlbyname(key.c_str(), value, &size, nullptr, 0) == 0;
}

} // namespace vantor::SystemValues
