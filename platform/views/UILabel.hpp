// SPDX-License-Identifier: MIT
#pragma once

#include "platform/views/UIView.hpp"

#include <string>

namespace vantor::platform {

/// A line of text (UTF-8).
class UILabel : public UIView {
public:
    using UIView::UIView;

    [[nodiscard]] const std::string& text() const { return m_text; }
    void setText(std::string text); ///< raises the change signal when the text is another one

private:
    std::string m_text;
};

} // namespace vantor::platform
