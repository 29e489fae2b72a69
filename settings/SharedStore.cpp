// SPDX-License-Identifier: MIT
#include "settings/SharedStore.hpp"

#include "platform/foundation/ParseDouble.hpp"

#include <string>

namespace vantor {

std::optional<platform::NSUserDefaults> openSharedStore() {
    return platform::NSUserDefaults::initWithSuiteName(sharedSuiteName);
}

bool sharedFlag(std::string_view key) {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    return store && store->boolForKey(key);
}

std::optional<double> refreshIntervalIn(const platform::NSUserDefaults& store) {
    const std::optional<std::string> text = store.stringForKey(SettingsKey::refreshSeconds);
    return text ? platform::parseDouble(*text) : std::nullopt;
}

double refreshInterval() {
    const std::optional<platform::NSUserDefaults> store = openSharedStore();
    return (store ? refreshIntervalIn(*store) : std::nullopt).value_or(usualRefreshInterval);
}

} // namespace vantor
