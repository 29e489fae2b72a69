// SPDX-License-Identifier: MIT
#include "hosts/wall/WallAccessible.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/wall/WallView.hpp"
#include "hosts/wall/WallWords.hpp"

#include <QAccessibleWidget>
#include <QHash>
#include <array>

namespace vantor::hosts::wall {

using platform::FleetFigure;

namespace {

constexpr int columns = 7; // name, state, and the five figures
constexpr std::array figures{FleetFigure::memory, FleetFigure::storage, FleetFigure::processor,
                             FleetFigure::received, FleetFigure::sent};

QString columnName(int column) {
    return column == 0   ? qt::hostText("wall_NAME")
           : column == 1 ? qt::hostText("wall_STATE")
                         : figureWord(figures.at(static_cast<std::size_t>(column - 2)));
}

QString cellText(const fleet::FleetRow& row, int column) {
    if (column < 2) {
        return column == 0 ? QString::fromStdString(row.machine->name) : stateText(row);
    }
    const FleetFigure figure = figures.at(static_cast<std::size_t>(column - 2));
    const QString text = figureText(figure, row.machine->figure(figure));
    const bool hasPlace = figure == FleetFigure::storage && !row.machine->volume.empty();
    return hasPlace ? isolated(row.machine->volume) + QLatin1Char(' ') + text : text;
}

class WallTable;

class WallCell final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    WallCell(WallView& view, int row, int column) : m_view(view), m_row(row), m_column(column) {}

    [[nodiscard]] bool isValid() const override { return m_row < rows(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override { return m_view.window()->windowHandle(); }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(&m_view);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? cellText(shown(), m_column) : QString();
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override {
        const QRect cell = isValid() ? m_view.cellOf(static_cast<std::size_t>(m_row)) : QRect();
        return {m_view.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.focusable = state.selectable = true;
        state.focused = isSelected() && m_view.hasFocus();
        state.selected = isSelected();
        state.offscreen = !m_view.viewport()->rect().intersects(
            isValid() ? m_view.cellOf(static_cast<std::size_t>(m_row)) : QRect());
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : nullptr;
    }
    [[nodiscard]] bool isSelected() const override {
        return m_view.cursor() == static_cast<std::size_t>(m_row);
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return m_column; }
    [[nodiscard]] int rowIndex() const override { return m_row; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

private:
    [[nodiscard]] int rows() const { return static_cast<int>(m_view.table().rows().size()); }
    [[nodiscard]] const fleet::FleetRow& shown() const {
        return m_view.table().rows().at(static_cast<std::size_t>(m_row));
    }

    WallView& m_view;
    const int m_row;
    const int m_column;
};

class WallTable final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit WallTable(WallView& view)
        : QAccessibleWidget(&view, QAccessible::Table, qt::hostText("wall_MACHINES")), m_view(view) {}
    ~WallTable() override { forget(); }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] int childCount() const override { return rowCount() * columns; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return cellAt(index / columns, index % columns);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const cell = dynamic_cast<const WallCell*>(child);
        return cell != nullptr ? cell->rowIndex() * columns + cell->columnIndex() : -1;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        const auto row = m_view.cursor();
        return row && m_view.hasFocus() ? cellAt(static_cast<int>(*row), 0) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint at = m_view.viewport()->mapFromGlobal(QPoint(x, y));
        const std::optional<std::size_t> row = m_view.rowAt(at);
        return row ? cellAt(static_cast<int>(*row), 0) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        if (row < 0 || row >= rowCount() || column < 0 || column >= columns) {
            return nullptr;
        }
        auto found = m_cells.constFind(row * columns + column);
        if (found == m_cells.constEnd()) {
            // The accessibility cache owns it until it is forgotten here.
            const QAccessible::Id id =
                QAccessible::registerAccessibleInterface(new WallCell(m_view, row, column));
            found = m_cells.insert(row * columns + column, id);
        }
        return QAccessible::accessibleInterface(*found);
    }
    [[nodiscard]] QString columnDescription(int column) const override { return columnName(column); }
    [[nodiscard]] QString rowDescription(int row) const override {
        return row < rowCount() ? cellText(m_view.table().rows().at(static_cast<std::size_t>(row)), 0)
                                : QString();
    }
    [[nodiscard]] int rowCount() const override { return static_cast<int>(m_view.table().rows().size()); }
    [[nodiscard]] int columnCount() const override { return columns; }
    [[nodiscard]] QList<int> selectedRows() const override {
        const auto row = m_view.cursor();
        return row ? QList<int>{static_cast<int>(*row)} : QList<int>();
    }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : selectedRows()) {
            for (int column = 0; column < columns; ++column) {
                cells.push_back(cellAt(row, column));
            }
        }
        return cells;
    }
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount() * columns; }
    [[nodiscard]] int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] bool isColumnSelected(int /*column*/) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    bool selectRow(int row) override {
        if (row < 0 || row >= rowCount()) {
            return false;
        }
        m_view.setCursor(static_cast<std::size_t>(row));
        return true;
    }
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override { forget(); }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override {
        if (name != pressAction()) {
            QAccessibleWidget::doAction(name);
        } else if (const auto row = m_view.cursor()) {
            m_view.openRow(*row);
        }
    }

private:
    void forget() {
        for (const QAccessible::Id id : std::as_const(m_cells)) {
            QAccessible::deleteAccessibleInterface(id);
        }
        m_cells.clear();
    }

    WallView& m_view;
    mutable QHash<int, QAccessible::Id> m_cells;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* const view = dynamic_cast<WallView*>(object);
    return view != nullptr ? new WallTable(*view) : nullptr; // the accessibility cache owns it
}

} // namespace

void installWallAccessibility() {
    QAccessible::installFactory(makeInterface); // keeps one entry, however often it is called
}

void tellOfNewRows(WallView& view) {
    if (QAccessible::isActive()) {
        QAccessibleTableModelChangeEvent event(&view, QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&event);
    }
}

void tellOfCursor(WallView& view, std::size_t row) {
    if (QAccessible::isActive()) {
        QAccessibleEvent event(&view, QAccessible::Focus);
        event.setChild(static_cast<int>(row) * columns);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace vantor::hosts::wall
