// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingText.hpp"
#include "settings/Settings.hpp"

#include <string>
#include <vector>

namespace vantor {

/// How a preference stands: the value that the widget goes by, and whether the store holds one.
struct SettingState {
    const Setting* setting = nullptr;
    SettingValue value = {}; ///< as the widget reads it; nothing for the automatic colour
    bool isStored = false;   ///< something stands under the key, be it of use or not
    std::string problem =
        {}; ///< why what is stored is not what was meant, a sentence for people; mostly empty

    [[nodiscard]] std::string text() const { return settingText(*setting, value); }
    bool operator==(const SettingState&) const = default;
};

/// All preferences as the store holds them at this moment, opened once. Unlike the widget's own reading this
/// survives an archive of something other than a colour, so that it can be told and mended.
[[nodiscard]] std::vector<SettingState> settingStates();

} // namespace vantor
