// SPDX-License-Identifier: MIT
#include "hosts/wall/WallView.hpp"

#include "fleet/FleetWords.hpp"
#include "hosts/wall/WallAccessible.hpp"

#include <QScrollBar>
#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace vantor::hosts::wall {

using fleet::FleetGroup;

namespace {

constexpr std::chrono::milliseconds tipAfter{350};
constexpr double topGap = 2, bottomGap = 16, closeBottomGap = 8; // points above and below the machines
constexpr int mostRects = 400;                                   // a region of more costs more than it saves

} // namespace

WallView::WallView(fleet::FleetTable& table, std::function<std::chrono::nanoseconds()> clock)
    : m_table(table), m_clock(std::move(clock)), m_tip(this) {
    installWallAccessibility();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    m_tipDelay.setSingleShot(true);
    m_tipDelay.setInterval(tipAfter);
    m_tipDelay.callOnTimeout(this, [this] {
        if (m_hovered) {
            showTip(*m_hovered);
        }
    });
}

void WallView::setLook(const WallLook& look) {
    m_painter.setLook(look, devicePixelRatioF());
    m_tip.setLook(look);
    setPalette(look.theme.palette());
    m_shape = WallShape();
    refresh();
}

int WallView::margin() const {
    return m_painter.look().pixels(Grid::margin);
}

/// Above the first machines, or the first heading, which has room of its own.
int WallView::top() const {
    return m_painter.look().pixels(hasHeadings() ? topGap : bottomGap);
}

bool WallView::hasHeadings() const {
    const auto& groups = m_table.groups();
    return groups.size() > 1 || (!groups.empty() && !groups.front().name.empty());
}

WallShape WallView::shape() const {
    WallShape shape;
    for (const FleetGroup& group : m_table.groups()) {
        shape.groups.emplace_back(group.size, group.isFolded);
    }
    shape.hasHeadings = hasHeadings();
    shape.width = viewport()->width();
    shape.density = m_density;
    return shape;
}

/// In a width, where the gap after the last column is in the margin.
fleet::WallGrid WallView::grid(int width, Density density, Spacing spacing) const {
    const WallLook& look = m_painter.look();
    const fleet::WallStep step = look.step(density, spacing);
    return {m_table.groups(), step, width - 2 * margin() + step.width - look.cell(density).width()};
}

int WallView::heightOf(const fleet::WallGrid& grid, Spacing spacing) const {
    return top() + grid.height() +
           m_painter.look().pixels(spacing == Spacing::close ? closeBottomGap : bottomGap);
}

/// The richest density with which all fit into the room that there is without a scroll bar, so that the bar
/// does not change it, be it close together; else the last.
std::pair<Density, Spacing> WallView::fitting() const {
    const QSize room = maximumViewportSize();
    for (std::size_t i = 0; i < densityCount; ++i) {
        const auto density = static_cast<Density>(i);
        for (const Spacing spacing : {Spacing::usual, Spacing::close}) {
            if (heightOf(grid(room.width(), density, spacing), spacing) <= room.height()) {
                return {density, spacing};
            }
        }
    }
    return {Density::smallSquares, Spacing::usual};
}

void WallView::layOut() {
    std::tie(m_density, m_spacing) = m_chosen ? std::pair(*m_chosen, Spacing::usual) : fitting();
    // Without a scroll bar first: one that is there must not be the reason that it is needed.
    const QSize room = maximumViewportSize();
    m_grid = grid(room.width(), m_density, m_spacing);
    const bool fits = verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff || wholeHeight() <= room.height();
    if (!fits) {
        m_grid = grid(viewport()->width(), m_density, m_spacing);
    }
    verticalScrollBar()->setRange(0, fits ? 0 : std::max(0, wholeHeight() - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(step().height);
    m_shape = shape();
}

int WallView::wholeHeight() const {
    return heightOf(m_grid, m_spacing);
}

fleet::WallGrid::Range WallView::visibleRows() const {
    const int from = verticalScrollBar()->value() - top();
    return m_grid.between(std::max(from, 0), std::max(from + viewport()->height(), 0));
}

void WallView::makeFaces() {
    const auto [first, end] = visibleRows();
    m_firstFace = first;
    m_faces.clear();
    for (std::size_t row = first; row < end; ++row) {
        m_faces.push_back(faceOf(m_table.rows().at(row), m_density));
    }
    m_headings.clear();
    for (const FleetGroup& group : m_table.groups()) {
        m_headings.push_back(QString::fromStdString(fleet::groupText(group)));
    }
    m_cursorRow = cursor();
}

/// What differs from what was painted, which is noted as painted.
QRegion WallView::changedRegion() {
    const std::vector<Face> faces = std::move(m_faces);
    const std::vector<QString> headings = std::move(m_headings);
    const std::optional<std::size_t> cursorRow = m_cursorRow;
    makeFaces();
    std::vector<QRect> changed;
    for (std::size_t i = 0; i < std::min(faces.size(), m_faces.size()); ++i) {
        if (!(faces[i] == m_faces[i])) {
            changed.push_back(cellOf(m_firstFace + i));
        }
    }
    for (std::size_t group = 0; group < m_headings.size(); ++group) {
        if (group >= headings.size() || headings[group] != m_headings[group]) {
            changed.push_back(headingRect(group));
        }
    }
    if (cursorRow != m_cursorRow) {
        for (const std::optional<std::size_t>& row : {cursorRow, m_cursorRow}) {
            changed.push_back(row ? cellOf(*row).adjusted(-1, -1, 1, 1) : QRect());
        }
    }
    if (changed.size() > mostRects) {
        return viewport()->rect();
    }
    QRegion region;
    for (const QRect& rect : changed) {
        region += rect;
    }
    return region;
}

void WallView::refresh() {
    if (shape() != m_shape || (!m_chosen && m_shape.width == 0)) {
        layOut();
        makeFaces();
        tellOfNewRows(*this);
        viewport()->update();
    } else if (const QRegion region = changedRegion(); !region.isEmpty()) {
        viewport()->update(region);
    }
    if (m_tip.isVisible()) {
        const std::optional<std::size_t> row = m_hovered ? m_hovered : m_cursorRow;
        if (row && *row < m_table.rows().size() && !cellOf(*row).isEmpty()) {
            showTip(*row);
        } else {
            hideTip();
        }
    }
}

void WallView::setDensity(std::optional<Density> chosen) {
    m_chosen = chosen;
    const std::optional<std::size_t> row = cursor();
    layOut();
    if (row) {
        scrollTo(cellOf(*row));
    }
    makeFaces();
    hideTip();
    viewport()->update();
    if (m_changed) {
        m_changed();
    }
}

std::size_t WallView::groupOf(std::size_t row) const {
    const auto& groups = m_table.groups();
    const auto after =
        std::ranges::upper_bound(groups, row, {}, [](const FleetGroup& group) { return group.first; });
    return after == groups.begin() ? 0 : static_cast<std::size_t>(after - groups.begin()) - 1;
}

QRect WallView::cellOf(std::size_t row) const {
    const auto place = m_grid.place(row);
    if (!place) {
        return {};
    }
    const QSize size = m_painter.look().cell(m_density);
    const int x = margin() + place->x;
    const int y = top() + place->y - verticalScrollBar()->value();
    return {QPoint(isRightToLeft() ? viewport()->width() - x - size.width() : x, y), size};
}

QRect WallView::headingRect(std::size_t group) const {
    const auto at = m_grid.headingAt(group);
    if (!at) {
        return {};
    }
    const int height = step().heading;
    return {margin(), top() + *at - verticalScrollBar()->value(), viewport()->width() - 2 * margin(), height};
}

std::optional<std::size_t> WallView::rowAt(const QPoint& at) const {
    const int x = isRightToLeft() ? viewport()->width() - 1 - at.x() : at.x();
    const std::optional<std::size_t> row =
        x < margin() ? std::nullopt
                     : m_grid.rowAt(x - margin(), at.y() - top() + verticalScrollBar()->value());
    return row && cellOf(*row).contains(at) ? row : std::nullopt;
}

std::optional<std::size_t> WallView::cursor() const {
    return m_cursor ? m_table.rowOf(m_cursor->first, m_cursor->second) : std::nullopt;
}

void WallView::updateCell(const std::optional<std::size_t>& row) {
    if (row) {
        const QRect cell = cellOf(*row);
        viewport()->update(cell.isEmpty() ? headingRect(groupOf(*row)) : cell.adjusted(-1, -1, 1, 1));
    }
}

void WallView::setCursor(std::size_t row) {
    const std::optional<std::size_t> before = cursor();
    const platform::FleetMachine& machine = *m_table.rows().at(row).machine;
    m_cursor.emplace(machine.source, machine.key);
    updateCell(before);
    m_cursorRow = row;
    scrollTo(cellOf(row));
    updateCell(row);
    tellOfCursor(*this, row);
}

/// All of a cell, and at the top what stands above the first ones.
void WallView::scrollTo(const QRect& cell) {
    if (cell.isEmpty()) {
        return;
    }
    QScrollBar& bar = *verticalScrollBar();
    const int over = step().heading;
    if (cell.top() < over) {
        bar.setValue(bar.value() + cell.top() - over);
    } else if (cell.bottom() + top() > viewport()->height()) {
        bar.setValue(bar.value() + cell.bottom() + top() - viewport()->height());
    }
}

void WallView::openRow(std::size_t row) {
    hideTip();
    if (m_open) {
        m_open(*m_table.rows().at(row).machine);
    }
}

} // namespace vantor::hosts::wall
