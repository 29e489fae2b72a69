// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/Assignments.hpp"

#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

std::string_view ueventValue(std::string_view uevent, std::string_view name) {
    while (const std::optional<Line> line = takeLine(uevent)) {
        std::string_view rest = line->text;
        if (line->ended && takeUntil(rest, '=') == name) {
            return rest;
        }
    }
    return {};
}

std::optional<std::string> unquoted(std::string_view value) {
    std::string result;
    char quote = 0;
    bool wasQuoted = false;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c == '\\' && quote != '\'' && i + 1 < value.size()) {
            result += value[++i];
        } else if (quote != 0 && c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == '"' || c == '\'')) {
            quote = c;
            wasQuoted = true;
        } else if (quote == 0 && wasQuoted && isBlank(c)) {
            break;
        } else {
            result += c;
        }
    }
    return quote == 0 ? std::optional(result) : std::nullopt;
}

} // namespace vantor::platform::linux
