// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/ActionButton.hpp"
#include "hosts/app/Text.hpp"

#include <QDialog>
#include <QPlainTextEdit>

namespace vantor::hosts::app {

/// A question about something that cannot be taken back: what it is about, what comes of it, a list of it
/// where there is one, and two buttons. Return and Escape mean no.
class Sheet final : public QDialog, public Looked {
    Q_OBJECT

public:
    explicit Sheet(QWidget* parent);

    void setTitle(const QString& title);
    void setSentence(const QString& sentence);
    /// Shows what it is about, a line each.
    void setList(const QStringList& lines);
    /// The text of the button that does it; empty: there is nothing to do any more.
    void setAction(const QString& text);
    void setCancel(const QString& text);

    [[nodiscard]] ActionButton& action() { return *m_action; }
    [[nodiscard]] ActionButton& cancel() { return *m_cancel; }
    [[nodiscard]] const Text& sentence() const { return *m_sentence; }
    [[nodiscard]] const QPlainTextEdit& list() const { return *m_list; }
    void setLook(const Look& look) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look m_look;
    Text* m_title;
    Text* m_sentence;
    QPlainTextEdit* m_list;
    ActionButton* m_cancel;
    ActionButton* m_action;
};

} // namespace vantor::hosts::app
