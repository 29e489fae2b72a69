// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetMenu.hpp"

#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/MenuStyle.hpp"
#include "hosts/qt/Theme.hpp"
#include "hosts/widget/WidgetCard.hpp"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFontInfo>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

namespace vantor::hosts::widget {

namespace {

/// Shown beside the entry; the window itself hears the keys.
void showKeys(QAction& action, const QKeySequence& keys) {
    action.setShortcut(keys);
    action.setShortcutContext(Qt::WidgetShortcut);
    action.setShortcutVisibleInContextMenu(true);
}

} // namespace

WidgetMenu::WidgetMenu(WidgetCard& card, QWidget& window, std::vector<Toggle> toggles)
    : QMenu(&window), m_card(card), m_window(window), m_toggles(std::move(toggles)) {
    auto* const style = new qt::MenuStyle;
    style->setParent(this);
    setStyle(style);
    for (QAbstractButton* button : card.actionButtons()) {
        addPress(*button);
    }
    showKeys(*m_presses.front().first, QKeySequence(Qt::Key_F5));
    addSeparator();
    addPress(card.displayModeButton());
    addToggles();
    addSeparator();
    QAction* const quit =
        addAction(qt::hostText("host_QUIT"), QCoreApplication::instance(), [] { QCoreApplication::exit(); });
    showKeys(*quit, QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(this, &QMenu::aboutToShow, this, [this] { refresh(); });
    refresh();
}

QAction* WidgetMenu::addPress(QAbstractButton& button) {
    QAction* const action = addAction(button.text(), &button, &QAbstractButton::click);
    m_presses.emplace_back(action, &button);
    return action;
}

void WidgetMenu::addToggles() {
    for (const Toggle& toggle : m_toggles) {
        QAction* const action = addAction(qt::hostText(toggle.key));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, &toggle](bool on) {
            toggle.set(on);
            refresh();
        });
        m_switches.push_back(action);
    }
}

void WidgetMenu::offerShowing(bool offered, std::function<void()> toggled) {
    if (m_show == nullptr && offered) {
        m_show = new QAction(this);
        insertAction(actions().front(), m_show);
        m_showLine = insertSeparator(m_presses.front().first);
        connect(m_show, &QAction::triggered, this, std::move(toggled));
    }
    if (m_show != nullptr) {
        m_show->setVisible(offered);
        m_showLine->setVisible(offered);
    }
    refresh();
}

void WidgetMenu::setTheme(const qt::Theme& theme) {
    setPalette(theme.menuPalette());
    QFont font = QGuiApplication::font();
    font.setPixelSize(theme.pixels(QFontInfo(font).pixelSize() / qt::desktopTextScale()));
    setFont(font);
}

/// The toolkit's own bounds are those of a screen whose upper left corner it takes the window's for.
void WidgetMenu::showEvent(QShowEvent* event) {
    if (m_place) {
        windowHandle()->setProperty("_q_waylandPopupAnchorRect", QRect(*m_place, QSize(1, 1)));
    }
    QMenu::showEvent(event);
}

void WidgetMenu::refresh() {
    for (const auto& [action, button] : m_presses) {
        if (action->text() != button->text()) {
            action->setText(button->text());
        }
        const auto* const target = dynamic_cast<qt::Button*>(button);
        action->setEnabled(target == nullptr || !target->isQuiet());
    }
    for (std::size_t i = 0; i < m_switches.size(); ++i) {
        const Toggle& toggle = m_toggles[i];
        m_switches[i]->setVisible(!toggle.isOffered || toggle.isOffered());
        m_switches[i]->setChecked(toggle.isOn());
    }
    if (m_show != nullptr) {
        m_show->setText(qt::hostText(m_window.isVisible() ? "host_HIDEWINDOW" : "host_SHOWWINDOW"));
    }
}

} // namespace vantor::hosts::widget
