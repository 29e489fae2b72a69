// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetCard.hpp"
#include "ui_WidgetForm.h"

#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPainter>
#include <functional>
#include <utility>

namespace vantor::hosts::widget {

namespace {

/// Pale on the card's ground. The toolkit paints nothing below labels, which are opaque, so that what stood
/// there before would shine through.
class PaleEffect final : public QGraphicsOpacityEffect {
public:
    PaleEffect(std::function<QColor()> ground, QObject* parent)
        : QGraphicsOpacityEffect(parent), m_ground(std::move(ground)) {}

protected:
    void draw(QPainter* painter) override {
        painter->fillRect(sourceBoundingRect(), m_ground());
        QGraphicsOpacityEffect::draw(painter);
    }

private:
    std::function<QColor()> m_ground;
};

} // namespace

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
            effect = new PaleEffect([this] { return m_theme.card; }, part);
            effect->setOpacity(paleness);
        }
        part->setGraphicsEffect(effect); // deletes the one before
    }
}

} // namespace vantor::hosts::widget
