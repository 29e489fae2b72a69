// SPDX-License-Identifier: MIT
#include "settings/SharedStore.hpp"

#include "platform/foundation/ParseDouble.hpp"

#include <string>

namespace vantor {

namespace {

constexpr double usualInterval = 2.0;

} // namespace

std::optional<platform::NSUserDefaults> openSharedStore() {
    return platform::NSUserDefaults::initWithSuiteName(sharedSuiteName);
}

bool sharedFlag(std::string_view key) {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    return store && store->boolForKey(key);
}

double refreshInterval() {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    const std::optional<std::string> text =
        store ? store->stringForKey(SettingsKey::refreshSeconds) : std::nullopt;
    if (!text) {
        return usualInterval;
    }
    return platform::parseDouble(*text).value_or(usualInterval);
}

} // namespace vantor
