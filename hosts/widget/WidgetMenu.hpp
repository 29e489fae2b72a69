// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

class QAbstractButton;

namespace vantor::hosts::qt {
struct Theme;
}

namespace vantor::hosts::widget {

class WidgetCard;

/// The card's actions and what its window can be asked for; a ring in the tray shares it. Its entries stay
/// the same objects, since a panel keeps a copy of them: `refresh` brings them up to date.
class WidgetMenu final : public QMenu {
public:
    /// What is on or off.
    struct Toggle {
        std::string_view key; ///< of its text
        std::function<bool()> isOn;
        std::function<void(bool)> set;
        std::function<bool()> isOffered = {}; ///< always, where there is none
    };

    /// Belongs to the window: without one above it a menu would be a window of its own under Wayland. The
    /// card is on it already.
    WidgetMenu(WidgetCard& card, QWidget& window, std::vector<Toggle> toggles);

    /// With a ring in the tray the menu begins with an entry that shows the window and hides it.
    void offerShowing(bool offered, std::function<void()> toggled = {});
    void setTheme(const qt::Theme& theme);
    /// Where under Wayland its upper left corner is to be, in the window's coordinates, when it is next
    /// shown; absent: where the compositor has room for it.
    void standAt(std::optional<QPoint> place) { m_place = place; }
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QAction* addPress(QAbstractButton& button);
    void addToggles();

    WidgetCard& m_card;
    QWidget& m_window;
    const std::vector<Toggle> m_toggles;
    std::vector<std::pair<QAction*, QAbstractButton*>> m_presses;
    std::vector<QAction*> m_switches; // one for each toggle
    std::optional<QPoint> m_place;
    QAction* m_show = nullptr;
    QAction* m_showLine = nullptr;
};

} // namespace vantor::hosts::widget
