// SPDX-License-Identifier: MIT
#include "platform/foundation/ParseDouble.hpp"

#include <clocale>
#include <cstdlib>
#include <string>

namespace vantor::platform {

namespace {

/// Made once and never freed: other threads may still parse while the process ends.
locale_t plainLocale() {
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

std::optional<double> parseDouble(std::string_view text) {
    constexpr std::string_view refusedAtTheFront{"\0\t\n\v\f\r ", 7};
    if (text.empty() || refusedAtTheFront.find(text.front()) != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string terminated(text);
    char* end = nullptr;
    const double value = ::strtod_l(terminated.c_str(), &end, plainLocale());
    // A NUL inside ends the conversion early, so it shows here as a rest.
    return end == terminated.c_str() + terminated.size() ? std::optional(value) : std::nullopt;
}

} // namespace vantor::platform
