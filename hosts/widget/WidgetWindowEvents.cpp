// SPDX-License-Identifier: MIT
#include "hosts/qt/LayerShell.hpp"
#include "hosts/qt/WindowPlace.hpp"
#include "hosts/qt/X11Desktop.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <iostream>
#include <utility>

namespace vantor::hosts::widget {

void WidgetWindow::paintEvent(QPaintEvent* event) {
    if (m_margin != 0) {
        QPainter(this).fillRect(event->rect(), card().theme().backdrop);
    }
}

void WidgetWindow::contextMenuEvent(QContextMenuEvent* event) {
    m_menu.popup(event->globalPos());
}

/// With a ring in the tray the window only steps back; without its panel nobody could get at it any more.
void WidgetWindow::closeEvent(QCloseEvent* event) {
    if (m_tray && QSystemTrayIcon::isSystemTrayAvailable()) {
        event->ignore();
        hide();
    } else {
        QWidget::closeEvent(event);
        QApplication::exit();
    }
}

/// What the toolkit has no words for, while the window is made and not yet on screen.
void WidgetWindow::takeLevel() {
    if (qt::isWayland()) {
        const bool wants = m_options.onTop || m_options.onDesktop;
        m_isOnLayer =
            wants && qt::putOnLayer(*windowHandle(),
                                    m_options.onTop ? qt::Layer::aboveWindows : qt::Layer::belowWindows,
                                    qt::edgesOf(m_options.anchor.empty() ? "top-right" : m_options.anchor),
                                    m_options.margin);
        if (wants && !m_isOnLayer && !std::exchange(m_toldOfLevels, true)) {
            std::cerr
                << "vantor-widget: an ordinary window: to keep it above or below others needs a Wayland "
                   "compositor with layers, and LayerShellQt when this was built\n";
        }
    } else if (m_options.onDesktop || m_isOnX11Desktop) {
        qt::setPartOfX11Desktop(*windowHandle(), m_options.onDesktop);
        m_isOnX11Desktop = m_options.onDesktop;
    }
}

void WidgetWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    windowHandle()->installEventFilter(this);
    takeLevel();
    m_menu.refresh();
}

void WidgetWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_menu.refresh();
}

/// Of the window system's window: whoever presses there sees it, whatever a locker said.
bool WidgetWindow::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) {
        m_settings.noteInput();
    }
    return QWidget::eventFilter(object, event);
}

/// Window managers do not move what is part of the desktop.
void WidgetWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && windowFlags().testFlag(Qt::FramelessWindowHint)) {
        if (m_isOnX11Desktop) {
            m_grip = event->globalPosition().toPoint() - pos();
        } else {
            windowHandle()->startSystemMove();
        }
    }
}

void WidgetWindow::mouseMoveEvent(QMouseEvent* event) {
    if (m_isOnX11Desktop && event->buttons().testFlag(Qt::LeftButton)) {
        move(event->globalPosition().toPoint() - m_grip);
    }
}

void WidgetWindow::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    if (m_wasSeen && isVisible() && !qt::isWayland()) { // there a client is not told where it is
        m_position = pos();
        keep();
    }
}

void WidgetWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Refresh)) {
        card().refreshButton().click();
    } else if (event->matches(QKeySequence::Quit)) {
        QApplication::exit();
    } else if (event->matches(QKeySequence::Close)) {
        close();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        const QWidget* const at = focusWidget() != nullptr ? focusWidget() : &card();
        m_menu.popup(at->mapToGlobal(at->rect().center()));
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace vantor::hosts::widget
