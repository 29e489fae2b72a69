// SPDX-License-Identifier: MIT
#include "hosts/common/StandardStreams.hpp"
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
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

namespace vantor::hosts::widget {

void WidgetWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!windowFlags().testFlag(Qt::FramelessWindowHint)) {
        painter.fillRect(event->rect(), card().theme().backdrop);
    } else if (const int reach = contentsMargins().left(); reach > 0) {
        card().paintShadow(painter, event->region(), reach);
    }
}

void WidgetWindow::contextMenuEvent(QContextMenuEvent* event) {
    popUpMenu(event->pos());
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

unsigned WidgetWindow::layerEdges() const {
    return qt::edgesOf(m_options.anchor.empty() ? "top-right" : m_options.anchor);
}

/// The margin that is asked for is the card's.
int WidgetWindow::layerMargin() const {
    return std::max(m_options.margin - contentsMargins().left(), 0);
}

/// At a point of this window. Where a layer's window is on its screen the toolkit is not told, and not every
/// compositor keeps its menus there.
void WidgetWindow::popUpMenu(QPoint at) {
    if (m_isOnLayer) {
        const QRect room = screen()->geometry();
        const QPoint place = qt::placeOnLayer(size(), room.size(), layerEdges(), layerMargin());
        const QSize menu = m_menu.sizeHint();
        const auto within = [](int first, int size, int whole) {
            return std::max(0, std::min(first, whole - size));
        };
        at = QPoint(within(place.x() + at.x(), menu.width(), room.width()),
                    within(place.y() + at.y(), menu.height(), room.height())) -
             place;
    }
    m_menu.standAt(m_isOnLayer ? std::optional(at) : std::nullopt);
    m_menu.popup(mapToGlobal(at));
}

/// What the toolkit has no words for, while the window is made and not yet on screen.
void WidgetWindow::takeLevel() {
    if (qt::isWayland()) {
        const bool wants = m_options.onTop || m_options.onDesktop;
        m_isOnLayer =
            wants && qt::putOnLayer(*windowHandle(),
                                    m_options.onTop ? qt::Layer::aboveWindows : qt::Layer::belowWindows,
                                    layerEdges(), layerMargin());
        if (wants && !m_isOnLayer && !std::exchange(m_toldOfLevels, true)) {
            common::complain("vantor-widget",
                             "an ordinary window: to keep it above or below others needs a Wayland "
                             "compositor with layers, and LayerShellQt when this was built");
        }
    } else if (m_options.onDesktop || m_isOnX11Desktop) {
        qt::setPartOfX11Desktop(*windowHandle(), m_options.onDesktop);
        m_isOnX11Desktop = m_options.onDesktop;
    }
    qt::tellX11Margins(*windowHandle(), contentsMargins());
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
        popUpMenu(at->mapTo(this, at->rect().center()));
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace vantor::hosts::widget
