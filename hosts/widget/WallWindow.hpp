// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/LoopDriver.hpp"
#include "hosts/qt/Presence.hpp"
#include "hosts/wall/Wall.hpp"
#include "hosts/widget/MachinePage.hpp"
#include "hosts/widget/Options.hpp"

#include <QTimer>
#include <QWidget>
#include <memory>

namespace vantor::hosts::widget {

/// The window of a wall: follows the desktop, and has machines asked only while it can be seen. A machine
/// that is opened takes the wall's place, and gives it back.
class WallWindow final : public QWidget {
public:
    /// The fleet is open and must outlive this.
    WallWindow(const Options& options, common::FleetHost& fleet);
    ~WallWindow() override;

    /// A later start of the program asks for this window.
    void heed(const Options& asked);
    void start();

    [[nodiscard]] wall::Wall& wall() { return m_wall; }
    /// The opened machine; null while the wall is shown.
    [[nodiscard]] MachinePage* page() { return m_page.get(); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void follow(const qt::DesktopWishes& wishes);
    void seenChanged();
    void openMachine(const platform::FleetMachine& machine);
    void closeMachine();
    void keep();

    Options m_options;
    const platform::Appearance m_toolkitAppearance;
    common::FleetHost& m_fleet;
    qt::DesktopSettings m_settings;
    wall::WallLook m_look;
    wall::Wall m_wall;
    std::unique_ptr<MachinePage> m_page;
    QTimer m_keeping;
    qt::Presence m_presence;
    qt::LoopDriver m_loop;
};

} // namespace vantor::hosts::widget
