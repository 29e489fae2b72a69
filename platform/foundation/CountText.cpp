// SPDX-License-Identifier: MIT
#include "platform/foundation/CountText.hpp"

#include "platform/viewer/Viewer.hpp"

#include <array>

namespace vantor::platform {

void appendNumber(std::string& text, const ScaledCount& scaled, const LocaleSigns& signs) {
    std::array<unsigned, 20> digits{};
    std::size_t count = 0;
    for (std::uint64_t left = scaled.digits; left > 0 || count <= scaled.fraction; left /= 10) {
        digits[count++] = static_cast<unsigned>(left % 10);
    }
    while (count > 0) {
        --count;
        text += signs.digits[digits[count]];
        if (count == scaled.fraction && count > 0) {
            text += signs.decimal;
        } else if (count > scaled.fraction && (count - scaled.fraction) % 3 == 0) {
            text += signs.grouping;
        }
    }
}

std::string countText(std::uint64_t count) {
    std::string text;
    appendNumber(text, ScaledCount{count, 0, 0}, currentViewer().localeSigns());
    return text;
}

} // namespace vantor::platform
