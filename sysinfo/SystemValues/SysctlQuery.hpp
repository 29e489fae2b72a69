// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <cstddef>
#include <optional>
#include <string>

/// The two reads that every namespace goes through, by the full key. Any failure of the kernel is absent.
namespace vantor::SystemValues {

/// The value as text in UTF-8; bytes that are not become U+FFFD.
[[nodiscard]] std::optional<std::string> querySysctlText(const std::string& key);

/// The kernel's own read into `size` bytes at `value`; false when it fails. Nothing is stored.
[[nodiscard]] bool readSysctlNumber(const std::string& key, void* value, std::size_t size);

/// The value read into exactly T's bytes. A stored text that is no T falls back to the kernel.
template<PackagesBase::FixedWidthInteger T>
[[nodiscard]] std::optional<T> querySysctlInteger(const std::string& key) {
    if (const std::optional<std::string> stored = SysctlQueryStorage::recovered(key)) {
        if (const std::optional<T> number = PackagesBase::parseInteger<T>(*stored)) {
            return number;
        }
    }
    T value = 0;
    if (!readSysctlNumber(key, &value, sizeof value)) {
        return std::nullopt;
    }
    SysctlQueryStorage::storeNumber(key, std::to_string(value));
    return value;
}

} // namespace vantor::SystemValues
