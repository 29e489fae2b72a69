// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetCard.hpp"
#include "ui_WidgetForm.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>

namespace vantor::hosts::widget {

void WidgetCard::showLine(const QString& text) {
    if (m_line == nullptr) {
        m_line = new QLabel(this);
        m_line->setTextFormat(Qt::PlainText);
        m_form->cardLayout->insertWidget(0, m_line);
        setTheme(m_theme);
    }
    if (m_line->text() != text) {
        m_line->setText(text);
        m_line->setToolTip(text); // what is cut off at the card's edge
    }
}

double WidgetCard::lineHeight() const {
    constexpr double points = 24;
    return m_line != nullptr ? points : 0;
}

void WidgetCard::setPale(bool pale) {
    for (QWidget* const part : {m_form->ringRow, m_form->details}) {
        if (pale == (part->graphicsEffect() != nullptr)) {
            continue;
        }
        QGraphicsOpacityEffect* effect = nullptr;
        if (pale) {
            constexpr double paleness = 0.45;
            m_animator.settle(); // a ring in motion is drawn past the effect
            effect = new QGraphicsOpacityEffect(part);
            effect->setOpacity(paleness);
        }
        part->setGraphicsEffect(effect); // deletes the one before
    }
}

} // namespace vantor::hosts::widget
