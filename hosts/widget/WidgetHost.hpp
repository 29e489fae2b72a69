// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/Pause.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/WidgetContext.hpp"
#include "hosts/qt/LoopDriver.hpp"
#include "hosts/widget/WidgetCard.hpp"

#include <chrono>
#include <functional>
#include <memory>

namespace vantor::hosts::widget {

/// The widget as a graphical host runs it: the controller and the card that shows it, the display mode, the
/// links, the failures, and the loop. Knows of no window, so that a picture in a file is made by the same
/// code. Main thread.
class WidgetHost {
public:
    using Programs = common::LinkOpener::Programs;

    explicit WidgetHost(Programs programs = Programs::installed(),
                        qt::LoopDriver::Clock clock = std::chrono::steady_clock::now);
    ~WidgetHost();
    WidgetHost(const WidgetHost&) = delete;
    WidgetHost& operator=(const WidgetHost&) = delete;

    /// The machine in place is another one, which must outlive this: a line above tells how old the figures
    /// are, and once it is silent the last ones stay, pale. Before anything is shown.
    void follow(const common::RemoteNode& node);

    /// The card, on nobody's window at first.
    [[nodiscard]] WidgetCard& card() { return *m_card; }
    [[nodiscard]] TEReportTableViewController& controller() { return *m_controller; }

    void setTheme(const qt::Theme& theme);
    /// Gives the widget a mode, as far as it offers that, with `tallest` points of room for the expanded one.
    void setMode(platform::NCWidgetDisplayMode mode, double tallest);
    [[nodiscard]] platform::NCWidgetDisplayMode mode() const { return m_mode; }
    /// Called with the size, in points, that the card is to have from now on, in place of giving it that.
    void setResizeHandler(std::function<void(platform::CGSize)> handler) { m_resized = std::move(handler); }

    /// Whether somebody can see the figures: only then the loop is turned. The widget is asked for an update
    /// at first, and taken up as after a pause later.
    void setActive(bool active);
    /// Brings the card up to date with what the last turns changed.
    void update();
    /// Called after each turn of the loop.
    void setTurnHandler(std::function<void()> handler) { m_turned = std::move(handler); }
    /// Called before the card shows a message, so that it can be seen.
    void setMessageHandler(std::function<void()> handler) { m_tells = std::move(handler); }

private:
    void turn(platform::Instant now);
    void fit();
    void tell(const std::string& line);

    std::shared_ptr<common::WidgetContext> m_context;
    std::shared_ptr<TEReportTableViewController> m_controller;
    std::unique_ptr<WidgetCard> m_card;
    std::function<void(platform::CGSize)> m_resized;
    std::function<void()> m_turned;
    std::function<void()> m_tells;
    platform::NCWidgetDisplayMode m_mode = platform::NCWidgetDisplayMode::compact;
    const common::RemoteNode* m_node = nullptr;
    bool m_started = false;
    common::PauseWatch m_pauses;
    qt::LoopDriver m_loop;
};

} // namespace vantor::hosts::widget
