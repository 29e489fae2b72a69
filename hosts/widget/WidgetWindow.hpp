// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/Presence.hpp"
#include "hosts/widget/Options.hpp"
#include "hosts/widget/TrayRing.hpp"
#include "hosts/widget/WidgetHost.hpp"
#include "hosts/widget/WidgetMenu.hpp"

#include <QWidget>
#include <memory>

namespace vantor::hosts::widget {

/// The frame around the card, and the ring in the tray that may stand for it: follows the desktop, keeps its
/// place, and has the widget run only while it can be seen.
class WidgetWindow final : public QWidget {
public:
    explicit WidgetWindow(const Options& options);
    ~WidgetWindow() override;

    [[nodiscard]] ReportCard& card() { return m_host.card(); }
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
    void setUpFrame();
    void setUpTray();
    void restore();
    void remember() const;
    void follow(const qt::DesktopWishes& wishes);
    void setMode(platform::NCWidgetDisplayMode mode);
    void toggleMode();
    void fit();
    void seenChanged();

    const Options m_options;
    const platform::Appearance m_toolkitAppearance;
    qt::DesktopSettings m_settings;
    WidgetHost m_host;
    WidgetMenu m_menu;
    std::unique_ptr<TrayRing> m_tray;
    qt::Presence m_presence;
    int m_margin = 0; // of the backdrop around the card, in points
    bool m_wasSeen = false;
};

} // namespace vantor::hosts::widget
