// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/ActionButton.hpp"
#include "hosts/app/AppIcons.hpp"
#include "hosts/app/UseModel.hpp"

#include <QTreeView>
#include <functional>
#include <set>
#include <string>

namespace vantor::hosts::app {

/// The rows of a list of applications, as tall as all of them: the page scrolls, not the list. A row with
/// processes unfolds by its arrow, a double click or the keys Right and Left; on the selected row is its
/// button.
class UseTree final : public QTreeView, public Looked {
    Q_OBJECT

public:
    /// `useTheme` as with AppIcons.
    UseTree(UseModel& model, bool useTheme);

    /// What the row's button does, and its text; without a text there is none.
    void setAction(const QString& text, std::function<void(const UseRow&)> action);
    /// Called when the row of the small ones is pressed.
    void setMoreHandler(std::function<void()> handler) { m_more = std::move(handler); }

    /// Called when a row unfolds.
    void setUnfoldHandler(std::function<void()> handler) { m_unfolded = std::move(handler); }
    /// The keys of those that are unfolded.
    [[nodiscard]] std::set<std::string> unfolded() const;

    void setLook(const Look& look) override;
    /// Where a column's figures end, counted from the end of the line.
    [[nodiscard]] int columnEnd(int column) const;
    /// Takes the height of all rows: after each change of them.
    void fitHeight();
    [[nodiscard]] int heightOf(const QModelIndex& index) const;
    [[nodiscard]] ActionButton& button() { return m_button; }

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void placeButton();
    void activateRow(const QModelIndex& index);
    [[nodiscard]] bool isOnFold(const QModelIndex& index, const QPoint& at) const;
    [[nodiscard]] QRect placed(const QRect& row, int start, int end) const;
    void paintTile(QPainter& painter, const QRect& row, bool isCurrent) const;
    void paintName(QPainter& painter, const QRect& row, const UseRow& use, bool isOpen) const;
    void paintFigures(QPainter& painter, const QRect& row, const QModelIndex& index) const;

    UseModel& m_model;
    mutable AppIcons m_icons;
    Look m_look;
    ActionButton m_button;
    std::function<void(const UseRow&)> m_action;
    std::function<void()> m_more, m_unfolded;
    bool m_keyboardFocus = false;
};

} // namespace vantor::hosts::app
