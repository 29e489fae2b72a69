// SPDX-License-Identifier: MIT
#include "hosts/wall/WallView.hpp"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace vantor::hosts::wall {

using fleet::FleetOrder;
using fleet::WallMove;

namespace {

constexpr std::array letters{
    std::pair(Qt::Key_W, FleetOrder::worst),     std::pair(Qt::Key_N, FleetOrder::name),
    std::pair(Qt::Key_R, FleetOrder::memory),    std::pair(Qt::Key_S, FleetOrder::storage),
    std::pair(Qt::Key_C, FleetOrder::processor), std::pair(Qt::Key_P, FleetOrder::processor),
    std::pair(Qt::Key_T, FleetOrder::network)};

std::optional<WallMove> moveOf(int key, bool isMirrored) {
    switch (key) {
    case Qt::Key_Left:
        return isMirrored ? WallMove::right : WallMove::left;
    case Qt::Key_Right:
        return isMirrored ? WallMove::left : WallMove::right;
    case Qt::Key_Up:
        return WallMove::up;
    case Qt::Key_Down:
        return WallMove::down;
    case Qt::Key_PageUp:
        return WallMove::pageUp;
    case Qt::Key_PageDown:
        return WallMove::pageDown;
    case Qt::Key_Home:
        return WallMove::first;
    case Qt::Key_End:
        return WallMove::last;
    default:
        return std::nullopt;
    }
}

} // namespace

void WallView::moveCursor(WallMove move) {
    if (m_table.rows().empty()) {
        return;
    }
    const std::optional<std::size_t> row = cursor();
    // The first key takes up the first machine in sight.
    const std::size_t to = row ? m_grid.moved(*row, move, viewport()->height()) : visibleRows().first;
    if (to >= m_table.rows().size()) {
        return;
    }
    setCursor(to);
    m_hovered.reset();
    const bool tellsLittle = m_density >= Density::ring || m_table.rows().at(to).band == fleet::Band::down;
    if (tellsLittle && m_grid.place(to)) {
        showTip(to);
    } else {
        hideTip();
    }
}

void WallView::foldGroup(std::size_t group) {
    const fleet::FleetGroup& shown = m_table.groups().at(group);
    m_table.fold(std::string(shown.name), !shown.isFolded);
    hideTip();
    refresh();
}

void WallView::orderBy(FleetOrder order) {
    m_table.orderBy(order, m_clock());
    refresh();
    if (const std::optional<std::size_t> row = cursor()) {
        scrollTo(cellOf(*row));
    }
    if (m_changed) {
        m_changed();
    }
}

bool WallView::heedLetter(int key) {
    const auto* const letter =
        std::ranges::find(letters, key, [](const auto& each) { return static_cast<int>(each.first); });
    if (letter != letters.end()) {
        orderBy(letter->second);
        return true;
    }
    const int step = key == Qt::Key_Plus || key == Qt::Key_Equal ? -1 : key == Qt::Key_Minus ? 1 : 0;
    if (step != 0) {
        setDensity(static_cast<Density>(
            std::clamp(static_cast<int>(m_density) + step, 0, static_cast<int>(densityCount) - 1)));
    }
    return step != 0;
}

void WallView::keyPressEvent(QKeyEvent* event) {
    const std::optional<std::size_t> row = cursor();
    const bool isPlain =
        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    if (const std::optional<WallMove> move = moveOf(event->key(), isRightToLeft()); isPlain && move) {
        moveCursor(*move);
    } else if (isPlain && row && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        openRow(*row);
    } else if (isPlain && row && event->key() == Qt::Key_Space) {
        foldGroup(groupOf(*row));
    } else if (event->key() == Qt::Key_Escape && m_tip.isVisible()) {
        hideTip();
    } else if (!isPlain || !heedLetter(event->key())) {
        event->ignore(); // the wall around takes the others
    }
}

void WallView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint at = event->position().toPoint();
    if (const std::optional<std::size_t> row = rowAt(at)) {
        setCursor(*row);
        return;
    }
    if (const auto group = m_grid.groupAt(at.y() - top() + verticalScrollBar()->value())) {
        foldGroup(*group);
    }
}

void WallView::mouseDoubleClickEvent(QMouseEvent* event) {
    const std::optional<std::size_t> row = rowAt(event->position().toPoint());
    if (row && event->button() == Qt::LeftButton) {
        openRow(*row);
    } else {
        mousePressEvent(event); // a heading that is clicked twice folds and unfolds
    }
}

void WallView::mouseMoveEvent(QMouseEvent* event) {
    const std::optional<std::size_t> row = rowAt(event->position().toPoint());
    if (std::exchange(m_hovered, row) == row) {
        return;
    }
    if (row && m_tip.isVisible()) {
        showTip(*row); // from one to the next without delay
    } else if (row) {
        m_tipDelay.start();
    } else {
        hideTip();
    }
}

bool WallView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        m_hovered.reset();
        hideTip();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void WallView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    hideTip();
    layOut();
    makeFaces();
    viewport()->update();
    if (m_changed) {
        m_changed();
    }
}

void WallView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    hideTip();
    makeFaces();
    viewport()->update();
}

void WallView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    updateCell(cursor());
}

void WallView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    hideTip();
    updateCell(cursor());
}

void WallView::showTip(std::size_t row) {
    m_tip.tell(m_table, row, groupOf(row), m_clock());
    m_tip.placeBy(cellOf(row), viewport()->geometry());
    m_tip.show();
    m_tip.raise();
}

void WallView::hideTip() {
    m_tipDelay.stop();
    m_tip.hide();
}

} // namespace vantor::hosts::wall
