// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/PangoMarkup.hpp"

#include "platform/core/PrintableText.hpp"

namespace vantor::hosts::terminal {

std::string markup(std::string_view text) {
    std::string escaped;
    for (const char c : platform::printableText(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

} // namespace vantor::hosts::terminal
