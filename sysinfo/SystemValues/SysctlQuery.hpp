// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sysctl/sysctlbyname.hpp"
#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <cstddef>
#include <optional>
#include <string>

/// The two reads that every namespace goes through, by the full key. Any failure of the kernel is absent.
namespace vantor::SystemValues {

/// The value as text in UTF-8; bytes that are not become U+FFFD.
[[nodiscard]] std::optional<std::string> querySysctlText(const std::string& key);

/// Whether a key reaches the kernel whole: one with a NUL inside would be cut short there, to another key.
[[nodiscard]] inline bool isWholeKey(const std::string& key) {
    return key.find('\0') == std::string::npos;
}

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
    if (!isWholeKey(key) || platform::sysctlbyname(key.c_str(), &value, &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    SysctlQueryStorage::storeNumber(key, std::to_string(value));
    return value;
}

} // namespace vantor::SystemValues
