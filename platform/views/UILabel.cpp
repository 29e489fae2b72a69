// SPDX-License-Identifier: MIT
#include "platform/views/UILabel.hpp"

#include <utility>

namespace vantor::platform {

void UILabel::setText(std::string text) {
    if (m_text != text) {
        m_text = std::move(text);
        setNeedsDisplay();
    }
}

} // namespace vantor::platform
