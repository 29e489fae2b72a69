// SPDX-License-Identifier: MIT
#include "hosts/qt/FormLengths.hpp"

#include "hosts/qt/Theme.hpp"

#include <QGridLayout>
#include <QWidget>
#include <algorithm>

namespace vantor::hosts::qt {

FormLengths::FormLengths(QWidget& form) {
    for (QLayout* layout : form.findChildren<QLayout*>()) {
        const auto* grid = dynamic_cast<QGridLayout*>(layout);
        m_lengths.push_back({layout, layout->contentsMargins(),
                             grid != nullptr ? grid->horizontalSpacing() : layout->spacing(),
                             grid != nullptr ? grid->verticalSpacing() : 0});
    }
}

void FormLengths::scale(const Theme& theme) {
    for (const auto& [layout, margins, spacing, verticalSpacing] : m_lengths) {
        layout->setContentsMargins(theme.pixels(margins.left()), theme.pixels(margins.top()),
                                   theme.pixels(margins.right()), theme.pixels(margins.bottom()));
        if (auto* grid = dynamic_cast<QGridLayout*>(layout)) {
            grid->setHorizontalSpacing(theme.pixels(spacing));
            grid->setVerticalSpacing(theme.pixels(verticalSpacing));
        } else {
            layout->setSpacing(theme.pixels(spacing));
        }
    }
}

int leastWidth(QLayoutItem& item) {
    QWidget* const widget = item.widget();
    QLayout* const layout = widget != nullptr ? widget->layout() : item.layout();
    if (layout == nullptr) {
        return widget != nullptr ? std::max(widget->minimumWidth(), widget->minimumSizeHint().width()) : 0;
    }
    const bool isRow = dynamic_cast<QHBoxLayout*>(layout) != nullptr;
    int width = isRow ? (layout->count() - 1) * layout->spacing() : 0;
    for (int i = 0; i < layout->count(); ++i) {
        const QWidget* const inRow = isRow ? layout->itemAt(i)->widget() : nullptr;
        if (inRow != nullptr && inRow->isHidden()) {
            continue; // a heading that needs its button's room
        }
        const int part = leastWidth(*layout->itemAt(i));
        width = isRow ? width + part : std::max(width, part);
    }
    return width;
}

} // namespace vantor::hosts::qt
