// SPDX-License-Identifier: MIT
#pragma once

#include "platform/views/UIView.hpp"

#include <memory>

namespace vantor::platform {

/// A row or column of views that is shown or hidden as a whole.
class UIStackView : public UIView {
public:
    using UIView::UIView;
    void addArrangedSubview(const std::shared_ptr<UIView>& view) { addSubview(view); }
};

} // namespace vantor::platform
