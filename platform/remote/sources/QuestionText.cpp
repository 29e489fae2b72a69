// SPDX-License-Identifier: MIT
#include "platform/remote/sources/QuestionText.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t longestSelector = 4096; // bytes

bool isLetter(char sign) {
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') || sign == '_';
}

bool isDigit(char sign) {
    return sign >= '0' && sign <= '9';
}

void passBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

bool take(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start)) {
        return false;
    }
    text.remove_prefix(start.size());
    return true;
}

bool takeName(std::string_view& text) {
    const auto end =
        std::ranges::find_if_not(text, [](char sign) { return isLetter(sign) || isDigit(sign); });
    const auto length = static_cast<std::size_t>(end - text.begin());
    const bool isName = isLabelName(text.substr(0, length));
    text.remove_prefix(length);
    return isName;
}

/// PromQL's three kinds of quotes; only between backticks a backslash stands for itself.
bool takeString(std::string_view& text) {
    const char quote = text.empty() ? '\0' : text.front();
    if (quote != '"' && quote != '\'' && quote != '`') {
        return false;
    }
    for (std::size_t i = 1; i < text.size() && (text[i] != '\n' || quote == '`'); ++i) {
        if (text[i] == '\\' && quote != '`') {
            ++i;
        } else if (text[i] == quote) {
            text.remove_prefix(i + 1);
            return true;
        }
    }
    return false;
}

bool takeMatcher(std::string_view& text) {
    if (!takeName(text)) {
        return false;
    }
    passBlanks(text);
    if (!take(text, "=~") && !take(text, "!~") && !take(text, "!=") && !take(text, "=")) {
        return false;
    }
    passBlanks(text);
    return takeString(text);
}

std::string_view trimmed(std::string_view text) {
    passBlanks(text);
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

bool isLabelName(std::string_view text) {
    return !text.empty() && isLetter(text.front()) &&
           std::ranges::all_of(text, [](char sign) { return isLetter(sign) || isDigit(sign); });
}

std::optional<std::string> selectorFrom(std::string_view text, std::string& problem) {
    std::string_view inner = trimmed(text);
    if (inner.size() >= 2 && inner.front() == '{' && inner.back() == '}') {
        inner = trimmed(inner.substr(1, inner.size() - 2));
    }
    std::string matchers;
    for (std::string_view rest = inner; !rest.empty();) {
        const std::string_view begin = rest;
        if (!takeMatcher(rest) || inner.size() > longestSelector) {
            problem = "a selector is a list of matchers such as job=\"node\",dc=~\"a|b\"";
            return std::nullopt;
        }
        matchers += matchers.empty() ? "" : ",";
        matchers += begin.substr(0, begin.size() - rest.size());
        passBlanks(rest);
        if (!rest.empty() && !take(rest, ",")) {
            problem = "between the matchers of a selector there are commas";
            return std::nullopt;
        }
        passBlanks(rest);
    }
    return matchers;
}

std::string quotedPromQL(std::string_view text) {
    std::string quoted = "\"";
    for (const char sign : text) {
        if (sign == '\n') {
            quoted += "\\n";
            continue;
        }
        if (sign == '"' || sign == '\\') {
            quoted += '\\';
        }
        quoted += sign;
    }
    return quoted + '"';
}

void appendFormField(std::string& form, std::string_view name, std::string_view value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    form += form.empty() ? "" : "&";
    form += name;
    form += '=';
    for (const char sign : value) {
        if (isLetter(sign) || isDigit(sign) || sign == '-' || sign == '.') {
            form += sign;
            continue;
        }
        const auto byte = static_cast<unsigned char>(sign);
        form += '%';
        form += digits[byte >> 4U];
        form += digits[byte & 0xFU];
    }
}

std::string secondsText(double seconds) {
    std::array<char, 64> text{};
    const auto [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, 3);
    return error == std::errc() ? std::string(text.data(), end) : "0";
}

} // namespace vantor::platform::remote
