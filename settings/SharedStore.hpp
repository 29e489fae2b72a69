// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/NSUserDefaults.hpp"

#include <optional>
#include <string_view>

namespace vantor {

/// The app group whose preference store the Vantor app writes and the widget only reads.
inline constexpr std::string_view sharedSuiteName = "group.vantor";

/// The preference keys.
namespace SettingsKey {
inline constexpr std::string_view isInactiveRAMHide = "isInactiveRAMHide";
inline constexpr std::string_view isReleasableSTORAGEShow = "isReleasableSTORAGEShow";
inline constexpr std::string_view preventCleanRAMFromWidget = "preventCleanRAMFromWidget";
inline constexpr std::string_view refreshSeconds = "refreshSeconds";
inline constexpr std::string_view chartcolor = "chartcolor";
} // namespace SettingsKey

/// Opens the store afresh; nothing when there is none to open. Let it go after one reading, so that the next
/// one sees what the app has changed. Any thread.
[[nodiscard]] std::optional<platform::NSUserDefaults> openSharedStore();

/// A flag of the store; false when the store does not open or the key holds nothing like a Boolean.
[[nodiscard]] bool sharedFlag(std::string_view key);

/// The interval of the report timer in seconds, unchecked: "refreshSeconds" where it is a number from its
/// first character to its last, else 2.0.
[[nodiscard]] double refreshInterval();

/// The interval in seconds where "refreshSeconds" holds no number.
inline constexpr double usualRefreshInterval = 2.0;
/// What "refreshSeconds" of an open store holds; absent where that is no number.
[[nodiscard]] std::optional<double> refreshIntervalIn(const platform::NSUserDefaults& store);

} // namespace vantor
