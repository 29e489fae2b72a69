// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/AppContent.hpp"
#include "hosts/app/Options.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/qt/DesktopSettings.hpp"
#include "hosts/qt/LoopDriver.hpp"
#include "hosts/qt/Presence.hpp"

#include <QTimer>
#include <QWidget>

namespace vantor::hosts::app {

/// The window around the pages: follows the desktop, keeps its size, takes links, and has the machine looked
/// at only while it can be seen.
class AppWindow final : public QWidget {
public:
    explicit AppWindow(const Options& options);
    ~AppWindow() override;

    /// A later start of the program asks for this window, with a page perhaps.
    void heed(const Options& asked);
    /// Shows the window, whatever it was before, and asks for the focus.
    void comeForward();

    [[nodiscard]] AppContent& content() { return m_content; }
    [[nodiscard]] qt::Presence& presence() { return m_presence; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void follow(const qt::DesktopWishes& wishes);
    void seenChanged(bool seen);
    void startSampling();
    void turn(platform::Instant now);
    void addShortcuts();
    void keep();

    const Options m_options;
    const platform::Appearance m_toolkitAppearance;
    qt::DesktopSettings m_settings;
    AppContent m_content;
    qt::Presence m_presence;
    common::PauseWatch m_pauses;
    qt::LoopDriver m_loop;
    QTimer m_sampling;
    QTimer m_keeping;
};

} // namespace vantor::hosts::app
