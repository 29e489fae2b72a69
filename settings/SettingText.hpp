// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"
#include "settings/Settings.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vantor {

/// A preference's value: a flag, a number of seconds, a colour, or nothing, which means the usual value.
using SettingValue = std::variant<std::monostate, bool, double, platform::UIColor>;

/// A value as a person or a script writes it: true, false, on, off, 1 or 0; plain decimal seconds with a
/// point, within 0.1 and 3600; "#rrggbb" or "automatic". Absent for anything else. The locale has no say.
[[nodiscard]] std::optional<SettingValue> parseSetting(const Setting& setting, std::string_view text);

/// The same text the other way; the usual value's where there is none. A colour that is not opaque has eight
/// digits, its opacity last.
[[nodiscard]] std::string settingText(const Setting& setting, const SettingValue& value);

/// Seconds as the store holds them: the shortest plain decimal text, "2.5".
[[nodiscard]] std::string secondsText(double seconds);

} // namespace vantor
