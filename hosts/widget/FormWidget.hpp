// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/FatalStop.hpp"

#include <QWidget>
#include <string>
#include <string_view>

namespace vantor::hosts::widget {

/// The widget of a form that has a name; a form without one is fatal.
template<class Widget>
[[nodiscard]] Widget& formWidget(const QWidget& form, std::string_view name) {
    auto* widget = dynamic_cast<Widget*>(
        form.findChild<QWidget*>(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))));
    if (widget == nullptr) {
        platform::fatalStop("the card's form has no widget for the outlet " + std::string(name));
    }
    return *widget;
}

} // namespace vantor::hosts::widget
