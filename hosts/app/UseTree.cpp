// SPDX-License-Identifier: MIT
#include "hosts/app/UseTree.hpp"

#include <QHeaderView>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <algorithm>

namespace vantor::hosts::app {

namespace {

// Points.
constexpr double processHeight = 32, moreHeight = 34;

/// Rows paint themselves; this only says how tall they are.
class RowHeights final : public QStyledItemDelegate {
public:
    explicit RowHeights(UseTree& tree) : QStyledItemDelegate(&tree), m_tree(tree) {}
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/,
                                 const QModelIndex& index) const override {
        return {1, m_tree.heightOf(index)};
    }

private:
    UseTree& m_tree;
};

} // namespace

UseTree::UseTree(UseModel& model, bool useTheme)
    : m_model(model),
      m_icons([this] { viewport()->update(); }, useTheme),
      m_button(ButtonSize::small, ButtonRole::destructive, viewport()) {
    setModel(&model);
    setItemDelegate(new RowHeights(*this));
    setHeaderHidden(true);
    header()->setStretchLastSection(true);
    setFrameShape(QFrame::NoFrame);
    setRootIsDecorated(false);
    setIndentation(0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(SingleSelection);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_Hover);
    m_button.setOnSelection(true);
    m_button.hide();
    connect(this, &QTreeView::expanded, this, [this] {
        fitHeight();
        if (m_unfolded) {
            m_unfolded();
        }
    });
    connect(this, &QTreeView::collapsed, this, [this] { fitHeight(); });
    connect(&m_button, &QAbstractButton::clicked, this, [this] {
        if (const UseRow* const row = m_model.rowAt(currentIndex()); row != nullptr && m_action) {
            m_action(*row);
        }
    });
}

void UseTree::setAction(const QString& text, std::function<void(const UseRow&)> action) {
    m_button.setText(text);
    m_action = std::move(action);
    placeButton();
}

void UseTree::setLook(const Look& look) {
    m_look = look;
    setFont(look.theme.font(TextSize::body));
    doItemsLayout();
    fitHeight();
}

int UseTree::heightOf(const QModelIndex& index) const {
    if (index.parent().isValid()) {
        return m_look.pixels(processHeight);
    }
    const UseRow* const row = m_model.rowAt(index);
    return m_look.pixels(row == nullptr || row->kind == UseRowKind::application ? Grid::row : moreHeight);
}

int UseTree::columnEnd(int column) const {
    constexpr double first = 240, second = 124; // points: the button is behind them
    return m_look.pixels(column == 1 ? first : second);
}

std::set<std::string> UseTree::unfolded() const {
    std::set<std::string> keys;
    for (int i = 0; i < m_model.rowCount(); ++i) {
        if (const QModelIndex row = m_model.index(i, 0); isExpanded(row)) {
            keys.insert(m_model.rowAt(row)->key);
        }
    }
    return keys;
}

void UseTree::fitHeight() {
    int height = 0;
    for (int i = 0; i < m_model.rowCount(); ++i) {
        const QModelIndex row = m_model.index(i, 0);
        height +=
            heightOf(row) + (isExpanded(row) ? m_model.rowCount(row) * m_look.pixels(processHeight) : 0);
    }
    if (height != this->height()) {
        setFixedHeight(height);
    }
    placeButton();
}

/// On the selected row, at its end.
void UseTree::placeButton() {
    const QModelIndex current = currentIndex();
    const UseRow* const row = current.parent().isValid() ? nullptr : m_model.rowAt(current);
    const bool wanted = row != nullptr && row->canEnd && m_action && !m_button.text().isEmpty();
    m_button.setVisible(wanted);
    if (wanted) {
        m_button.resize(m_button.sizeHint());
        const QRect place = visualRect(current.siblingAtColumn(0));
        const int margin = m_look.pixels(Grid::gap);
        const int x =
            layoutDirection() == Qt::RightToLeft ? margin : viewport()->width() - margin - m_button.width();
        m_button.move(x, place.y() + (place.height() - m_button.height()) / 2);
    }
}

void UseTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    viewport()->update();
    placeButton();
}

void UseTree::activateRow(const QModelIndex& index) {
    const UseRow* const row = m_model.rowAt(index);
    if (row == nullptr || index.parent().isValid()) {
        return;
    }
    if (row->kind == UseRowKind::more) {
        if (m_more) {
            m_more();
        }
    } else {
        setExpanded(index.siblingAtColumn(0), !isExpanded(index.siblingAtColumn(0)));
    }
}

void UseTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const UseRow* const row = m_model.rowAt(index);
    if (row != nullptr && event->button() == Qt::LeftButton &&
        (row->kind == UseRowKind::more || isOnFold(index, event->pos()))) {
        activateRow(index);
    }
}

void UseTree::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        activateRow(currentIndex());
        return;
    case Qt::Key_Delete:
        if (m_button.isVisible()) {
            m_button.click();
        }
        return;
    default:
        // The fold's keys follow the direction of the page.
        QTreeView::keyPressEvent(event);
        m_keyboardFocus = true;
        viewport()->update();
    }
}

void UseTree::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    placeButton();
}

void UseTree::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = qt::isKeyboardFocus(*event, m_keyboardFocus);
    QTreeView::focusInEvent(event);
    if (m_keyboardFocus && !currentIndex().isValid()) {
        setCurrentIndex(m_model.index(0, 0));
    }
}

} // namespace vantor::hosts::app
