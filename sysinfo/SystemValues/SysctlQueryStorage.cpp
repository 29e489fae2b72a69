// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <utility>

namespace vantor::SystemValues {

std::optional<std::string> SysctlQueryStorage::recovered(const std::string& key) {
    if (!recoverEveryQueryFromStorage || !enabled) {
        return std::nullopt;
    }
    return records.with([&](const Records& stored) -> std::optional<std::string> {
        const auto found = stored.find(key);
        return found != stored.end() ? std::optional(found->second) : std::nullopt;
    });
}

void SysctlQueryStorage::storeText(const std::string& key, const std::optional<std::string>& text) {
    if (!enabled) {
        return;
    }
    records.with([&](Records& stored) {
        if (text) {
            stored.insert_or_assign(key, *text);
        } else {
            stored.erase(key);
        }
    });
}

void SysctlQueryStorage::storeNumber(const std::string& key, std::string text) {
    if (enabled) {
        records.with([&](Records& stored) { stored.insert_or_assign(key, std::move(text)); });
    }
}

} // namespace vantor::SystemValues
