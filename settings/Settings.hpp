// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SharedStore.hpp"

#include <array>
#include <cstdint>
#include <string_view>

namespace vantor {

enum class SettingKind : std::uint8_t { flag, seconds, color };

/// What there is to know of a preference, in English.
struct Setting {
    std::string_view key; ///< as it is stored
    SettingKind kind = SettingKind::flag;
    std::string_view takes;   ///< the values that it takes, as a person writes them
    std::string_view usual;   ///< what holds where nothing is stored, written the same way
    std::string_view effect;  ///< what it does, as one sentence
    std::string_view applies; ///< when a running widget follows, as one sentence
};

/// The interval that may be written, in seconds. What is stored otherwise is read without a bound.
inline constexpr double shortestRefresh = 0.1, longestRefresh = 3600;

/// All preferences, in the order in which they are shown.
inline constexpr std::string_view atNextReport = "A running widget follows at its next report.";
inline constexpr std::array<Setting, 5> allSettings{{
    {SettingsKey::isInactiveRAMHide, SettingKind::flag, "true or false", "false",
     "Counts inactive memory, which could be moved to swap, as free instead of used.", atNextReport},
    {SettingsKey::isReleasableSTORAGEShow, SettingKind::flag, "true or false", "false",
     "Shows the storage that the caches and the trash could give back, and counts it as free.", atNextReport},
    {SettingsKey::preventCleanRAMFromWidget, SettingKind::flag, "true or false", "false",
     "Makes the widget's memory button show the memory page instead of freeing memory.", atNextReport},
    {SettingsKey::refreshSeconds, SettingKind::seconds, "0.1 to 3600 seconds, such as 2.5", "2",
     "Sets how often the widget reports memory, storage and processor.",
     "A running widget follows at its next start or when Refresh is pressed."},
    {SettingsKey::chartcolor, SettingKind::color, "a colour such as #bf5af2, or automatic", "automatic",
     "Gives the rings one colour of your own; automatic means green, yellow, orange and red by level.",
     atNextReport},
}};

/// The preference of that name, in any letter case; null where there is none.
[[nodiscard]] const Setting* settingNamed(std::string_view name);

} // namespace vantor
