// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sysctl/sysctlbyname.hpp"
#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// The two reads that every namespace goes through, by the full key. Any failure of the kernel is absent.
namespace vantor::SystemValues {

/// The value as text in UTF-8; bytes that are not become U+FFFD.
[[nodiscard]] std::optional<std::string> querySysctlText(const std::string& key);

/// Whether the kernel may be asked: no `Replay` shows another machine, and the key is whole. One with a NUL
/// inside would be cut short there, to another key.
[[nodiscard]] bool reachesKernel(const std::string& key);

/// The value as people read it, whatever its kind: a text as it is, a number in decimal.
[[nodiscard]] std::optional<std::string> querySysctlDescription(const std::string& key);

/// The keys at or below a name ("hw", "net.ipv4") as far as the system can list them, in alphabetical order;
/// while a `Replay` lives, those that were recorded. Not each has a value.
[[nodiscard]] std::vector<std::string> querySysctlKeys(const std::string& name);

/// The value read into exactly T's bytes; absent where T cannot hold it. A stored text that is no T falls
/// back to the kernel.
template<PackagesBase::FixedWidthInteger T>
[[nodiscard]] std::optional<T> querySysctlInteger(const std::string& key) {
    if (const std::optional<std::string> stored = SysctlQueryStorage::recovered(key)) {
        if (const std::optional<T> number = PackagesBase::parseInteger<T>(*stored)) {
            return number;
        }
    }
    T value = 0;
    std::size_t size = sizeof value;
    if (!reachesKernel(key) || platform::sysctlbyname(key.c_str(), &value, &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    SysctlQueryStorage::storeNumber(key, std::to_string(value));
    return value;
}

} // namespace vantor::SystemValues
