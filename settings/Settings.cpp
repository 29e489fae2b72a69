// SPDX-License-Identifier: MIT
#include "settings/Settings.hpp"

#include <algorithm>

namespace vantor {

const Setting* settingNamed(std::string_view name) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (const Setting& setting : allSettings) {
        if (std::ranges::equal(name, setting.key, {}, lower, lower)) {
            return &setting;
        }
    }
    return nullptr;
}

} // namespace vantor
