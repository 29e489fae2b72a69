// SPDX-License-Identifier: MIT
#include "settings/SettingState.hpp"

#include "platform/foundation/NSLocalizedString.hpp"
#include "settings/ChartColor.hpp"

#include <cmath>

namespace vantor {

namespace {

using platform::NSLocalizedString;
using platform::NSUserDefaults;
using platform::PropertyListKind;

void takeFlag(SettingState& state, const NSUserDefaults& store) {
    const PropertyListKind kind = store.objectForKey(state.setting->key)->kind();
    state.value = store.boolForKey(state.setting->key);
    if (kind != PropertyListKind::boolean && kind != PropertyListKind::integer &&
        kind != PropertyListKind::real && kind != PropertyListKind::string) {
        state.problem = NSLocalizedString("setting_NOFLAG");
    }
}

void takeSeconds(SettingState& state, const NSUserDefaults& store) {
    const std::optional<double> seconds = refreshIntervalIn(store);
    if (!seconds) {
        state.problem = NSLocalizedString("setting_NOSECONDS");
        return;
    }
    state.value = *seconds;
    if (!(*seconds >= shortestRefresh && *seconds <= longestRefresh)) {
        state.problem = NSLocalizedString("setting_RANGE");
    }
}

void takeColor(SettingState& state, const NSUserDefaults& store) {
    const ChartColorRecord record = chartColorIn(store);
    if (record.color) {
        state.value = *record.color;
    }
    state.problem = record.problem;
}

} // namespace

std::vector<SettingState> settingStates() {
    const std::optional<NSUserDefaults> store = openSharedStore();
    std::vector<SettingState> states;
    for (const Setting& setting : allSettings) {
        SettingState state{.setting = &setting};
        if (setting.kind == SettingKind::flag) {
            state.value = false;
        } else if (setting.kind == SettingKind::seconds) {
            state.value = usualRefreshInterval;
        }
        state.isStored = store && store->objectForKey(setting.key);
        if (state.isStored) {
            const auto take = setting.kind == SettingKind::flag      ? takeFlag
                              : setting.kind == SettingKind::seconds ? takeSeconds
                                                                     : takeColor;
            take(state, *store);
        }
        states.push_back(std::move(state));
    }
    return states;
}

} // namespace vantor
