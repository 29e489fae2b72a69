// SPDX-License-Identifier: MIT
#include "hosts/app/Sheet.hpp"

#include "hosts/qt/HostText.hpp"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace vantor::hosts::app {

Sheet::Sheet(QWidget* parent)
    : QDialog(parent),
      m_title(new Text(TextSize::title)),
      m_sentence((new Text(TextSize::body, Ink::secondary))->wrapped()),
      m_list(new QPlainTextEdit),
      m_cancel(new ActionButton(ButtonSize::small)),
      m_action(new ActionButton(ButtonSize::small, ButtonRole::destructive)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);
    (void)m_title->wrapped();
    m_list->setReadOnly(true);
    m_list->setTabChangesFocus(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_list->hide();
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_action);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_title);
    column->addWidget(m_sentence);
    column->addWidget(m_list, 1);
    column->addStretch();
    column->addLayout(buttons);
    setCancel(qt::hostText("app_CANCEL"));
    connect(m_cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    m_cancel->setDefault(true);
    m_cancel->setFocus();
}

void Sheet::setTitle(const QString& title) {
    setWindowTitle(title);
    m_title->setText(title);
}

void Sheet::setSentence(const QString& sentence) {
    m_sentence->display(sentence);
}

void Sheet::setList(const QStringList& lines) {
    m_list->setPlainText(lines.join(QLatin1Char('\n')));
    m_list->setVisible(!lines.isEmpty());
}

void Sheet::setAction(const QString& text) {
    m_action->setText(text);
    m_action->setVisible(!text.isEmpty());
    m_action->updateGeometry();
}

void Sheet::setCancel(const QString& text) {
    m_cancel->setText(text);
    m_cancel->updateGeometry();
}

void Sheet::setLook(const Look& look) {
    constexpr double wide = 460, least = 180, listHeight = 200; // points
    m_look = look;
    const int margin = look.pixels(Grid::margin);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(look.pixels(12));
    m_list->setFont(look.theme.font(TextSize::label));
    m_list->setMinimumHeight(look.pixels(listHeight));
    QPalette palette = look.theme.palette();
    palette.setColor(QPalette::Base, look.theme.fill);
    m_list->setPalette(palette);
    setMinimumSize(look.pixels(wide), look.pixels(least));
}

void Sheet::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), m_look.theme.card);
}

} // namespace vantor::hosts::app
