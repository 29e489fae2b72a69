// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// The text exposition format 0.0.4 in the making: a family's head, then its samples.
class Exposition {
public:
    void family(std::string_view name, std::string_view type, std::string_view help);
    /// Of the last family. Labels as "{name=\"value\"}", or empty.
    void sample(std::string_view labels, const std::string& value);
    /// A family of one sample without labels.
    void gauge(std::string_view name, std::string_view help, const std::string& value);
    [[nodiscard]] const std::string& text() const { return m_text; }

    /// A number as the format writes it, be it none.
    [[nodiscard]] static std::string numberText(double value);
    /// A label's value: backslashes and quotation marks are escaped, and it has to be UTF-8 in one line.
    [[nodiscard]] static std::string labelled(std::string_view value);

private:
    std::string m_name;
    std::string m_text;
};

} // namespace vantor::hosts::terminal
