// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/Notice.hpp"
#include "hosts/qt/Presence.hpp"
#include "hosts/qt/TrayWatch.hpp"
#include "hosts/widget/MemoryWarning.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/TrayRing.hpp"
#include "hosts/widget/WidgetHost.hpp"
#include "hosts/widget/WidgetMenu.hpp"
#include "hosts/widget/WindowMemory.hpp"

#include <QVariantAnimation>
#include <QWidget>
#include <memory>
#include <optional>
#include <utility>

namespace vantor::hosts::widget {

/// The frame around the card, and the ring in the tray that may stand for it: follows the desktop, keeps its
/// place, and has the widget run only while it can be seen.
class WidgetWindow final : public QWidget {
public:
    explicit WidgetWindow(const Options& options,
                          WidgetHost::Programs programs = WidgetHost::Programs::installed());
    ~WidgetWindow() override;

    /// The machine in place is another one, which must outlive this.
    void follow(const common::RemoteNode& node) { m_host.follow(node); }

    /// Shows the window, or waits for the tray alone, as the options have it.
    void start();
    /// A later start of the program asks for this window, with options of its own.
    void heed(const Options& asked);
    /// Shows the window, whatever it was before, and asks for the focus.
    void comeForward();

    /// Whether it is on its way from one size to another.
    [[nodiscard]] bool isGliding() const { return m_glide.state() == QAbstractAnimation::Running; }
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
    /// From one height of the card, in logical pixels, and place of the frame to another.
    struct Way {
        int fromHeight = 0;
        int toHeight = 0;
        QPoint from;
        QPoint to;
    };

    [[nodiscard]] std::vector<WidgetMenu::Toggle> toggles();
    void setUpFrame();
    void setLevel(bool onTop, bool onDesktop);
    void takeLevel();
    [[nodiscard]] unsigned layerEdges() const;
    [[nodiscard]] int layerMargin() const;
    void popUpMenu(QPoint at);
    void setTray(bool wanted);
    void showTrayRing();
    void toggleShown();
    void keep();
    void follow(const qt::DesktopWishes& wishes);
    void setMode(platform::NCWidgetDisplayMode mode);
    void toggleMode();
    void setUpGlide();
    void glide(const Way& way);
    void showGliding(double share);
    void settle();
    void fit();
    void frameCard();
    void seenChanged();
    void warnOfMemory();

    WindowKeeper m_keeper;
    Options m_given;   ///< on the command line, and as toggles have changed it since: for the autostart entry
    Options m_options; ///< the same with what is remembered
    const platform::Appearance m_toolkitAppearance;
    qt::DesktopSettings m_settings;
    WidgetHost m_host;
    WidgetMenu m_menu;
    std::unique_ptr<qt::TrayWatch> m_trayWatch;
    std::unique_ptr<TrayRing> m_tray;
    std::unique_ptr<MemoryWarning> m_memoryWarning;
    std::unique_ptr<qt::Notice> m_notice; ///< of short memory
    qt::Presence m_presence;
    std::optional<QPoint> m_position; ///< of its frame, where the window system tells
    platform::CGSize m_content;       ///< of the card, in points
    QVariantAnimation m_glide;
    Way m_way;                                         ///< of the glide, or of the last one
    std::optional<std::pair<QPoint, QPoint>> m_growth; ///< the place before the card grew, and the one after
    QPoint m_grip;                                     ///< where the pointer holds a card that moves itself
    bool m_isOnX11Desktop = false;
    bool m_isOnLayer = false; ///< of a Wayland screen
    bool m_isChangingMode = false;
    bool m_toldOfLevels = false;
    bool m_wasSeen = false;
};

} // namespace vantor::hosts::widget
