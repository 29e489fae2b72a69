// SPDX-License-Identifier: MIT
#include "hosts/app/UseList.hpp"

#include "hosts/app/Card.hpp"
#include "hosts/qt/HostText.hpp"

#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr int headerHeight = 40; // points
constexpr std::size_t fewest = 4;

} // namespace

UseList::UseList(const QString& first, const QString& second, bool useTheme, Summary summary)
    : m_tree(new UseTree(m_model, useTheme)), m_header(new QWidget), m_summary(std::move(summary)) {
    const QString name = qt::hostText("app_APPLICATIONS");
    m_model.setHeadings(name, first, second);
    const std::array texts{name, first, second};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        m_heads[i] = new Text(TextSize::label, Ink::secondary, i == 0 ? QFont::Bold : QFont::Normal);
        m_heads[i]->setParent(m_header);
        m_heads[i]->setText(texts.at(i));
        if (i > 0) {
            (void)m_heads[i]->atEnd();
        }
    }
    m_tree->setAccessibleName(name);
    m_tree->setMoreHandler([this] {
        m_showsAll = !m_showsAll;
        fill();
    });
    auto* const card = new Card;
    auto* const inside = new QVBoxLayout(card);
    inside->setContentsMargins(Grid::unit, Grid::unit / 2, Grid::unit, Grid::unit);
    inside->setSpacing(0);
    inside->addWidget(m_header);
    inside->addWidget(m_tree);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(card);
}

void UseList::display(std::vector<UseRow> applications, std::vector<UseRow> rest) {
    m_applications = std::move(applications);
    m_rest = std::move(rest);
    fill();
}

void UseList::setRoom(int pixels) {
    if (std::exchange(m_room, pixels) != pixels) {
        fill();
    }
}

void UseList::fill() {
    const int small = m_look.pixels(34); // the row of the others, and each one of the rest
    const int taken = m_look.pixels(headerHeight + 12) + small * static_cast<int>(m_rest.size() + 1);
    const int rows = (m_room - taken) / std::max(m_look.pixels(Grid::row), 1);
    const std::size_t limit = std::max<std::size_t>(fewest, static_cast<std::size_t>(std::max(rows, 0)));
    std::vector<UseRow> shown = m_applications;
    // One row more than fits is no row for the others.
    if (m_applications.size() > limit + 1) {
        const auto firstHidden = shown.begin() + static_cast<std::ptrdiff_t>(limit);
        UseRow more = m_showsAll ? UseRow{} : m_summary({firstHidden, shown.end()});
        if (m_showsAll) {
            more.name = qt::hostText("host_SHOWLESS");
        } else {
            shown.erase(firstHidden, shown.end());
        }
        more.kind = UseRowKind::more;
        more.key = "more";
        shown.push_back(std::move(more));
    }
    shown.insert(shown.end(), m_rest.begin(), m_rest.end());
    m_model.setRows(std::move(shown));
    m_tree->fitHeight();
}

void UseList::setLook(const Look& look) {
    m_look = look;
    m_header->setFixedHeight(look.pixels(headerHeight));
    fill();
}

/// Headings end where the figures below them end.
void UseList::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int wide = width() - 2 * m_look.pixels(Grid::unit), high = m_look.pixels(headerHeight);
    const int column = m_look.pixels(108), start = m_look.pixels(Grid::gap);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    for (const int i : {0, 1, 2}) {
        const int width = i == 0 ? wide / 2 : column;
        const int x = i == 0 ? start : wide - m_tree->columnEnd(i) - column;
        m_heads[i]->setGeometry(mirrored ? wide - x - width : x, 0, width, high);
    }
}

} // namespace vantor::hosts::app
