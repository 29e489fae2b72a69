// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/Presence.hpp"
#include "hosts/qt/TrayWatch.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/TrayRing.hpp"
#include "hosts/widget/WidgetHost.hpp"
#include "hosts/widget/WidgetMenu.hpp"
#include "hosts/widget/WindowMemory.hpp"

#include <QWidget>
#include <memory>
#include <optional>

namespace vantor::hosts::widget {

/// The frame around the card, and the ring in the tray that may stand for it: follows the desktop, keeps its
/// place, and has the widget run only while it can be seen.
class WidgetWindow final : public QWidget {
public:
    explicit WidgetWindow(const Options& options,
                          WidgetHost::Programs programs = WidgetHost::Programs::installed());
    ~WidgetWindow() override;

    /// Shows the window, or waits for the tray alone, as the options have it.
    void start();
    /// A later start of the program asks for this window, with options of its own.
    void heed(const Options& asked);
    /// Shows the window, whatever it was before, and asks for the focus.
    void comeForward();

    [[nodiscard]] WidgetCard& card() { return m_host.card(); }
    [[nodiscard]] qt::Presence& presence() { return m_presence; }
    [[nodiscard]] WidgetMenu& menu() { return m_menu; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    /// Where the card was before it grew, and where that moved it to.
    struct Growth {
        QPoint from;
        QPoint to;
    };

    [[nodiscard]] std::vector<WidgetMenu::Toggle> toggles();
    void setUpFrame();
    void setLevel(bool onTop, bool onDesktop);
    void takeLevel();
    void setTray(bool wanted);
    void showTrayRing();
    void toggleShown();
    void keep();
    void follow(const qt::DesktopWishes& wishes);
    void setMode(platform::NCWidgetDisplayMode mode);
    void toggleMode();
    void fit();
    void seenChanged();

    WindowKeeper m_keeper;
    Options m_given;   ///< on the command line, and as toggles have changed it since: for the autostart entry
    Options m_options; ///< the same with what is remembered
    const platform::Appearance m_toolkitAppearance;
    qt::DesktopSettings m_settings;
    WidgetHost m_host;
    WidgetMenu m_menu;
    std::unique_ptr<qt::TrayWatch> m_trayWatch;
    std::unique_ptr<TrayRing> m_tray;
    qt::Presence m_presence;
    std::optional<QPoint> m_position; ///< of its frame, where the window system tells
    std::optional<Growth> m_growth;
    QPoint m_grip;    ///< where the pointer holds a card that moves itself
    int m_margin = 0; ///< of the backdrop around the card, in points
    bool m_isOnX11Desktop = false;
    bool m_isOnLayer = false; ///< of a Wayland screen
    bool m_toldOfLevels = false;
    bool m_wasSeen = false;
};

} // namespace vantor::hosts::widget
