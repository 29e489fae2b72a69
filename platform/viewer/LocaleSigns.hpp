// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

namespace vantor::platform {

/// How the user's locale writes numbers, and the language that picks unit words. UTF-8.
struct LocaleSigns {
    std::string language =
        "en"; ///< "en", "it", "de", "fr", "es", "pt-BR", "ja", "zh-Hans", "ru", "ar", or another
    std::string decimal = ".";
    std::string grouping = ","; ///< empty: digits are not grouped
    std::string minus = "-";
    std::array<std::string, 10> digits{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
    bool operator==(const LocaleSigns&) const = default;
};

} // namespace vantor::platform
