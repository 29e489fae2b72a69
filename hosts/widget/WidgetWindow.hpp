// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/LoopDriver.hpp"
#include "hosts/qt/Presence.hpp"
#include "hosts/widget/DesktopContext.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/ReportCard.hpp"
#include "hosts/widget/TrayRing.hpp"

#include <QMenu>
#include <QWidget>
#include <memory>

namespace vantor::hosts::widget {

/// The window that plays the host: it creates the controller, calls it back for updates and modes, has links
/// opened, and turns the run loop only while it can be seen.
class WidgetWindow final : public QWidget {
public:
    explicit WidgetWindow(const Options& options);
    ~WidgetWindow() override;

    [[nodiscard]] ReportCard& card() { return *m_card; }
    [[nodiscard]] qt::Presence& presence() { return m_presence; }
    /// Shows the window, whatever it was before, and asks for the focus.
    void comeForward();

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setUpWindow();
    void setUpTray();
    void restore();
    void keepOnScreen();
    void remember() const;
    void fillMenu();
    void addToggle(std::string_view key, bool on, std::function<void(bool)> toggled);
    void follow(const qt::DesktopWishes& wishes);
    void setTheme(platform::Appearance appearance, const QColor& accent);
    void setMode(platform::NCWidgetDisplayMode mode);
    void toggleMode();
    void fit();
    void seenChanged();
    void resume();
    void turned();
    void open(const platform::NSURL& url, std::function<void(bool)> finished);

    const Options m_options;
    const platform::Appearance m_themeAppearance;
    qt::DesktopSettings m_settings;
    std::shared_ptr<DesktopContext> m_context;
    std::shared_ptr<TEReportTableViewController> m_controller;
    std::unique_ptr<ReportCard> m_card;
    QMenu m_menu;
    std::unique_ptr<TrayRing> m_tray;
    qt::LoopDriver m_loop;
    qt::Presence m_presence;
    platform::NCWidgetDisplayMode m_mode = platform::NCWidgetDisplayMode::compact;
    int m_margin = 0; // of the backdrop around the card, in logical pixels
    bool m_started = false;
    bool m_active = false; // the loop turns
};

} // namespace vantor::hosts::widget
