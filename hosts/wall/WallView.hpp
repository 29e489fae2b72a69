// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "fleet/WallGrid.hpp"
#include "hosts/wall/WallPainter.hpp"
#include "hosts/wall/WallShape.hpp"
#include "hosts/wall/WallTip.hpp"

#include <QAbstractScrollArea>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::hosts::wall {

/// The machines of a table, painted by one widget: as richly as the room allows, group below group. What
/// changes is painted again, and nothing else. Takes keys, wheel and pointer; a screen reader meets it as a
/// table.
class WallView final : public QAbstractScrollArea {
    Q_OBJECT // or a screen reader finds any scroll area

        public : WallView(fleet::FleetTable& table, std::function<std::chrono::nanoseconds()> clock);

    void setLook(const WallLook& look);
    /// The table has changed in any way.
    void refresh();

    [[nodiscard]] Density density() const { return m_density; }
    /// Absent: by the room.
    void setDensity(std::optional<Density> chosen);
    /// The row that keys act on; absent where there is none.
    [[nodiscard]] std::optional<std::size_t> cursor() const;
    void setCursor(std::size_t row);
    [[nodiscard]] fleet::FleetTable& table() const { return m_table; }
    /// The height that shows all without scrolling.
    [[nodiscard]] int wholeHeight() const;
    /// Where a row is in the viewport; empty for a row of a folded group.
    [[nodiscard]] QRect cellOf(std::size_t row) const;
    [[nodiscard]] std::optional<std::size_t> rowAt(const QPoint& at) const;
    /// Whether what it shows may change by time alone.
    [[nodiscard]] bool tellsAges() const { return m_density <= Density::rings || m_tip.isVisible(); }
    /// How many machines have been painted since this was made.
    [[nodiscard]] std::size_t paintedCells() const { return m_paintedCells; }
    [[nodiscard]] WallTip& tip() { return m_tip; }

    void setOpenHandler(std::function<void(const platform::FleetMachine&)> open) { m_open = std::move(open); }
    /// Called when the user has asked for another order or density.
    void setChangeHandler(std::function<void()> changed) { m_changed = std::move(changed); }
    void openRow(std::size_t row);
    void orderBy(fleet::FleetOrder order);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void layOut();
    [[nodiscard]] fleet::WallGrid grid(int width, Density density, Spacing spacing) const;
    [[nodiscard]] int heightOf(const fleet::WallGrid& grid, Spacing spacing) const;
    [[nodiscard]] std::pair<Density, Spacing> fitting() const;
    [[nodiscard]] fleet::WallStep step() const { return m_painter.look().step(m_density, m_spacing); }
    [[nodiscard]] WallShape shape() const;
    void makeFaces();
    [[nodiscard]] QRegion changedRegion();
    void paintPart(QPainter& painter, const QRect& part);
    void paintHeading(QPainter& painter, std::size_t group, const QRect& line);
    [[nodiscard]] QRect headingRect(std::size_t group) const;
    [[nodiscard]] std::size_t groupOf(std::size_t row) const;
    [[nodiscard]] fleet::WallGrid::Range visibleRows() const;
    void moveCursor(fleet::WallMove move);
    bool heedLetter(int key);
    void foldGroup(std::size_t group);
    void scrollTo(const QRect& cell);
    void showTip(std::size_t row);
    void hideTip();
    void paintNothing(QPainter& painter);
    void updateCell(const std::optional<std::size_t>& row);
    [[nodiscard]] int margin() const;
    [[nodiscard]] int top() const;
    [[nodiscard]] bool hasHeadings() const;

    fleet::FleetTable& m_table;
    const std::function<std::chrono::nanoseconds()> m_clock;
    WallPainter m_painter;
    WallTip m_tip;
    QTimer m_tipDelay;
    fleet::WallGrid m_grid;
    WallShape m_shape;
    std::optional<Density> m_chosen;
    Density m_density = Density::cards;
    Spacing m_spacing = Spacing::usual;
    std::optional<std::pair<std::size_t, std::string>> m_cursor; ///< a machine's source and key
    std::optional<std::size_t> m_cursorRow;                      ///< where it was drawn
    std::size_t m_firstFace = 0;
    std::vector<Face> m_faces; ///< of the rows that are in sight, as they were painted
    std::vector<QString> m_headings;
    std::optional<std::size_t> m_hovered;
    std::size_t m_paintedCells = 0;
    std::function<void(const platform::FleetMachine&)> m_open;
    std::function<void()> m_changed;
};

} // namespace vantor::hosts::wall
