// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/SysctlQuery.hpp"

#include "platform/sysctl/SysctlSource.hpp"
#include "sysinfo/SystemValues/Replay.hpp"

namespace vantor::SystemValues {

bool reachesKernel(const std::string& key) {
    return !Replay::isOn() && key.find('\0') == std::string::npos;
}

std::optional<std::string> querySysctlText(const std::string& key) {
    if (std::optional<std::string> stored = SysctlQueryStorage::recovered(key)) {
        return stored;
    }
    std::size_t size = 0;
    if (!reachesKernel(key) || platform::sysctlbyname(key.c_str(), nullptr, &size, nullptr, 0) != 0) {
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

std::optional<std::string> querySysctlDescription(const std::string& key) {
    using Kind = platform::SysctlValue::Kind;
    const platform::SysctlAnswer answer =
        reachesKernel(key) ? platform::currentSysctlSource().read(key) : platform::SysctlAnswer();
    if (answer.error == 0 && (answer.value.kind == Kind::number4 || answer.value.kind == Kind::number8)) {
        const auto number = querySysctlInteger<std::uint64_t>(key);
        return number ? std::optional(std::to_string(*number)) : std::nullopt;
    }
    return querySysctlText(key);
}

std::vector<std::string> querySysctlKeys(const std::string& name) {
    if (!Replay::isOn()) {
        return platform::currentSysctlSource().keys(name);
    }
    std::vector<std::string> keys;
    for (const auto& [key, value] : SysctlQueryStorage::records.value()) {
        if (name.empty() || key == name || key.starts_with(name + ".")) {
            keys.push_back(key);
        }
    }
    return keys;
}

} // namespace vantor::SystemValues
