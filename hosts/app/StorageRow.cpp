// SPDX-License-Identifier: MIT
#include "hosts/app/StorageRow.hpp"

#include "hosts/app/TrashSign.hpp"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace vantor::hosts::app {

StorageRow::StorageRow(const QString& name, const QString& detail, const QString& size, bool isQuiet)
    : m_name(name), m_line(new QHBoxLayout(this)), m_start(new QHBoxLayout), m_end(new QHBoxLayout) {
    const Ink ink = isQuiet ? Ink::secondary : Ink::text;
    auto* const title = (new Text(TextSize::body, ink))->wrapped();
    title->setText(name);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch();
    texts->addWidget(title);
    if (!detail.isEmpty()) {
        auto* const below = (new Text(TextSize::caption, Ink::secondary))->wrapped();
        below->setText(detail);
        texts->addWidget(below);
    }
    texts->addStretch();
    auto* const figure = (new Text(TextSize::body, ink))->atEnd();
    figure->setText(size);
    m_line->addLayout(m_start);
    m_line->addLayout(texts, 1);
    m_line->addWidget(figure);
    m_line->addLayout(m_end);
}

Tick& StorageRow::addTick(bool isTicked) {
    auto* const tick = new Tick(m_name);
    tick->setChecked(isTicked);
    m_start->addWidget(tick);
    return *tick;
}

void StorageRow::addTrashSign() {
    m_start->addWidget(new TrashSign);
}

ActionButton& StorageRow::addButton(const QString& text, ButtonRole role) {
    auto* const button = new ActionButton(ButtonSize::small, role);
    button->setText(text);
    button->setAccessibleName(text + QStringLiteral(": ") + m_name);
    m_end->addWidget(button);
    return *button;
}

/// The columns line up: boxes and buttons have their room in every row.
void StorageRow::setLook(const Look& look) {
    constexpr double startRoom = 26, endRoom = 124; // points
    m_look = look;
    m_line->setContentsMargins(0, look.pixels(6), 0, look.pixels(6));
    m_line->setSpacing(look.pixels(Grid::gap));
    m_start->setSpacing(0);
    m_start->setContentsMargins(0, 0, 0, 0);
    for (const auto& [side, room] : {std::pair(m_start, startRoom), std::pair(m_end, endRoom)}) {
        if (side->count() == 0) {
            side->addWidget(new QWidget);
        }
        if (QWidget* const widget = side->itemAt(0)->widget()) {
            widget->setMinimumWidth(look.pixels(room));
        }
    }
    setMinimumHeight(look.pixels(Grid::row));
}

} // namespace vantor::hosts::app
