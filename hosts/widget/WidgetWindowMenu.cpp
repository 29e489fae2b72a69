// SPDX-License-Identifier: MIT
#include "hosts/qt/HostText.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/WidgetWindow.hpp"
#include "platform/core/PrintableText.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <utility>

// The window's menu, which the ring in the tray shares.
namespace vantor::hosts::widget {

void WidgetWindow::setUpTray() {
    if (!m_options.tray || !QSystemTrayIcon::isSystemTrayAvailable()) {
        return;
    }
    QApplication::setQuitOnLastWindowClosed(false); // the ring in the tray stays
    connect(&m_menu, &QMenu::aboutToShow, this, [this] { fillMenu(); });
    m_tray = std::make_unique<TrayRing>(m_card->rings(), m_menu, [this] {
        if (isVisible() && !isMinimized()) {
            hide();
        } else {
            comeForward();
        }
    });
    m_tray->update(m_card->theme());
}

void WidgetWindow::addToggle(std::string_view key, bool on, std::function<void(bool)> toggled) {
    QAction* action = m_menu.addAction(qt::hostText(key));
    action->setCheckable(true);
    action->setChecked(on);
    connect(action, &QAction::toggled, this, std::move(toggled));
}

void WidgetWindow::fillMenu() {
    m_menu.clear();
    for (QAbstractButton* button : m_card->actionButtons()) {
        m_menu.addAction(button->text(), button, &QAbstractButton::click);
    }
    m_menu.addSeparator();
    m_menu.addAction(m_card->displayModeButton().text(), &m_card->displayModeButton(),
                     &QAbstractButton::click);
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && !m_options.onDesktop) {
        addToggle("host_ALWAYSONTOP", windowFlags().testFlag(Qt::WindowStaysOnTopHint), [this](bool on) {
            setWindowFlag(Qt::WindowStaysOnTopHint, on); // hides the window
            show();
        });
    }
    addToggle("host_AUTOSTART", isAutostarted(), [this](bool on) {
        if (const std::optional<std::string> problem = setAutostart(on)) {
            m_card->showMessage(QString::fromStdString(platform::printableText(*problem)));
        }
    });
    m_menu.addSeparator();
    m_menu.addAction(qt::hostText("host_QUIT"), qApp, &QCoreApplication::quit);
}

void WidgetWindow::contextMenuEvent(QContextMenuEvent* event) {
    fillMenu();
    m_menu.popup(event->globalPos());
}

} // namespace vantor::hosts::widget
