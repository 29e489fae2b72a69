// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingState.hpp"

#include <string>
#include <vector>

namespace vantor::hosts::command {

/// "refreshSeconds             2.5        set" and a line feed; "default" where nothing is stored.
[[nodiscard]] std::string settingLine(const SettingState& state);

/// The same for programs, on one line without a line feed:
/// {"key":"refreshSeconds","value":2.5,"stored":true}. Seconds that no JSON number can tell are null; the
/// automatic colour is "automatic".
[[nodiscard]] std::string settingJson(const SettingState& state);

/// A paragraph about a preference: what it does, takes and usually is, and when it takes effect.
[[nodiscard]] std::string settingDescription(const Setting& setting);

/// Says on standard error which stored values are not what was meant, and whether the file can be used at
/// all; false where it cannot.
bool complainAboutStore(const std::vector<SettingState>& states);

} // namespace vantor::hosts::command
