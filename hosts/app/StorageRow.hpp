// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/ActionButton.hpp"
#include "hosts/app/Controls.hpp"
#include "hosts/app/Text.hpp"

#include <QBoxLayout>
#include <QWidget>

namespace vantor::hosts::app {

/// One thing that takes room on the disk: a name, what becomes of it, its size, and what can be done.
class StorageRow final : public QWidget, public Looked {
    Q_OBJECT

public:
    /// `isQuiet`: nothing of it can be released here.
    StorageRow(const QString& name, const QString& detail, const QString& size, bool isQuiet);

    /// Puts a box before the name.
    Tick& addTick(bool isTicked);
    /// Puts a bin there.
    void addTrashSign();
    ActionButton& addButton(const QString& text, ButtonRole role = ButtonRole::usual);
    void setLook(const Look& look) override;

private:
    const QString m_name;
    QBoxLayout* m_line;
    QBoxLayout* m_start;
    QBoxLayout* m_end;
    Look m_look;
};

} // namespace vantor::hosts::app
