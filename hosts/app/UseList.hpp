// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/Text.hpp"
#include "hosts/app/UseTree.hpp"

#include <QWidget>
#include <functional>
#include <vector>

namespace vantor::hosts::app {

/// The applications of a page with two figures each: as many as there is room for, the rest in one row, which
/// unfolds, and below that what belongs to no application, so that all rows add up to the ring.
class UseList final : public QWidget, public Looked {
    Q_OBJECT

public:
    /// What the row for those that are not listed says, from them.
    using Summary = std::function<UseRow(const std::vector<UseRow>& hidden)>;

    UseList(const QString& first, const QString& second, bool useTheme, Summary summary);

    /// Applications as they are to be listed, and what comes after them.
    void display(std::vector<UseRow> applications, std::vector<UseRow> rest);
    /// How tall the page is without this list, and with: in between is its room.
    void setRoom(int pixels);
    [[nodiscard]] UseTree& tree() const { return *m_tree; }
    [[nodiscard]] UseModel& model() { return m_model; }
    void setLook(const Look& look) override;

private:
    void fill();

    UseModel m_model;
    UseTree* m_tree;
    Text* m_heads[UseModel::columns];
    QWidget* m_header;
    Summary m_summary;
    std::vector<UseRow> m_applications;
    std::vector<UseRow> m_rest;
    Look m_look;
    int m_room = 0;
    bool m_showsAll = false;

protected:
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace vantor::hosts::app
