// SPDX-License-Identifier: MIT
#include "hosts/app/Text.hpp"

namespace vantor::hosts::app {

Text::Text(double points, Ink ink, QFont::Weight weight) : m_points(points), m_ink(ink), m_weight(weight) {
    setTextFormat(Qt::PlainText);
    align();
}

Text* Text::atEnd() {
    m_side = Side::end;
    align();
    return this;
}

Text* Text::wrapped() {
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    return this;
}

void Text::display(const QString& text) {
    if (this->text() != text) {
        setText(text);
    }
    if (isHidden()) {
        setVisible(true);
    }
}

/// A label alone would go by the direction of its text, and "10 GB" has none.
void Text::align() {
    const bool left = (layoutDirection() == Qt::LeftToRight) == (m_side == Side::start);
    setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter | (left ? Qt::AlignLeft : Qt::AlignRight));
}

void Text::setLook(const Look& look) {
    setFont(look.theme.font(m_points, m_weight));
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, m_ink == Ink::text ? look.theme.text : look.theme.secondaryText);
    setPalette(palette);
    align();
}

} // namespace vantor::hosts::app
