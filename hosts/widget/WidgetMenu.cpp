// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetMenu.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/ReportCard.hpp"
#include "platform/core/PrintableText.hpp"

#include <QAbstractButton>
#include <QCoreApplication>
#include <utility>

namespace vantor::hosts::widget {

WidgetMenu::WidgetMenu(ReportCard& card, QWidget& window, bool offersOnTop)
    : m_card(card), m_window(window), m_offersOnTop(offersOnTop) {
    connect(this, &QMenu::aboutToShow, this, [this] { fill(); });
    fill(); // a tray does not show an empty one
}

void WidgetMenu::fill() {
    clear();
    for (QAbstractButton* button : m_card.actionButtons()) {
        addAction(button->text(), button, &QAbstractButton::click);
    }
    addSeparator();
    addAction(m_card.displayModeButton().text(), &m_card.displayModeButton(), &QAbstractButton::click);
    if (m_offersOnTop) {
        addToggle("host_ALWAYSONTOP", m_window.windowFlags().testFlag(Qt::WindowStaysOnTopHint),
                  [this](bool on) {
                      m_window.setWindowFlag(Qt::WindowStaysOnTopHint, on); // hides the window
                      m_window.show();
                  });
    }
    addToggle("host_AUTOSTART", isAutostarted(), [this](bool on) {
        if (const std::optional<std::string> problem = setAutostart(on)) {
            m_card.showMessage(QString::fromStdString(platform::printableText(*problem)));
        }
    });
    addSeparator();
    addAction(qt::hostText("host_QUIT"), QCoreApplication::instance(), &QCoreApplication::quit);
}

void WidgetMenu::addToggle(std::string_view key, bool on, std::function<void(bool)> toggled) {
    QAction* action = addAction(qt::hostText(key));
    action->setCheckable(true);
    action->setChecked(on);
    connect(action, &QAction::toggled, this, std::move(toggled));
}

} // namespace vantor::hosts::widget
