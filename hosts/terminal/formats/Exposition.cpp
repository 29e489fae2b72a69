// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Exposition.hpp"

#include "platform/core/PrintableText.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor::hosts::terminal {

void Exposition::family(std::string_view name, std::string_view type, std::string_view help) {
    m_name = name;
    m_text.append("# HELP ").append(name).append(" ").append(help).append("\n");
    m_text.append("# TYPE ").append(name).append(" ").append(type).append("\n");
}

void Exposition::sample(std::string_view labels, const std::string& value) {
    m_text.append(m_name).append(labels).append(" ").append(value).append("\n");
}

void Exposition::gauge(std::string_view name, std::string_view help, const std::string& value) {
    family(name, "gauge", help);
    sample("", value);
}

std::string Exposition::numberText(double value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? "+Inf" : "-Inf";
    }
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

std::string Exposition::labelled(std::string_view value) {
    std::string escaped;
    for (const char c : platform::printableText(value, 4096)) {
        escaped += c == '\\' || c == '"' ? "\\" : "";
        escaped += c;
    }
    return escaped;
}

} // namespace vantor::hosts::terminal
