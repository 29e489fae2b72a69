// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "hosts/common/Pause.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/WidgetContext.hpp"
#include "hosts/terminal/picture/Picture.hpp"
#include "platform/machine/Machine.hpp"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace vantor::hosts::terminal {

/// The widget as this host runs it: the controller, the display mode, what the actions do and what there is
/// to tell beside the figures. Knows nothing of the terminal. Main thread.
class TerminalHost {
public:
    /// For the machine of that name. `interval` is in seconds; absent: the preference's.
    explicit TerminalHost(std::string name, std::optional<double> interval = std::nullopt,
                          bool isExpanded = true,
                          common::LinkOpener::Programs programs = common::LinkOpener::Programs::installed());
    ~TerminalHost();
    TerminalHost(const TerminalHost&) = delete;
    TerminalHost& operator=(const TerminalHost&) = delete;

    /// The machine in place is another one, which must outlive this: its name tells how old the figures are,
    /// and once it is silent the last ones stay, pale.
    void follow(common::RemoteNode& node);

    /// There is something to go back to, with the key Esc; whether that was asked for.
    void offerWayBack() { m_offersBack = true; }
    [[nodiscard]] bool goesBack() const { return m_goesBack; }

    /// Turns the main loop, after a pause with the widget taken up again.
    void turn(platform::Instant now);
    /// The widget leaves the screen, or has left it: the next turn comes after a pause.
    void pause() { m_pauses.begin(); }

    /// The scene to draw at an instant.
    [[nodiscard]] const Scene& sceneAt(platform::Instant now);
    /// The scene as it was last asked for; its charts move on by themselves.
    [[nodiscard]] const Scene& scene() const { return m_scene; }
    /// True once after each change of what the scene holds.
    [[nodiscard]] bool takeChange();
    /// Whether each section has figures, so that a first picture is worth drawing.
    [[nodiscard]] bool hasFigures() const;
    /// When the notice goes; absent without one.
    [[nodiscard]] std::optional<platform::Instant> noticeEnd() const;

    void perform(Action action, platform::Instant now);
    [[nodiscard]] bool hasQuit() const { return m_hasQuit; }

private:
    void setMode(bool isExpanded);
    void tell(std::string text, platform::Instant now);
    void noteFailures();
    void keepInterval();

    const std::string m_name;
    common::RemoteNode* m_node = nullptr;
    std::string m_heading; ///< the node's, as it was shown last
    const std::optional<double> m_interval;
    std::shared_ptr<common::WidgetContext> m_context;
    std::shared_ptr<TEReportTableViewController> m_controller;
    std::shared_ptr<platform::NSTimer> m_ownTimer; ///< in place of the controller's, for an interval of ours
    Scene m_scene;
    std::string m_notice;
    platform::Instant m_noticeEnd;
    std::vector<platform::SourceFailure> m_failures;
    std::set<platform::Source> m_refreshing; ///< whose reports a refresh has still to bring
    bool m_isExpanded = false;
    bool m_appIsThere = true; ///< until it is known
    bool m_changed = true;
    bool m_hasQuit = false;
    bool m_offersBack = false;
    bool m_goesBack = false;
    common::PauseWatch m_pauses;
};

} // namespace vantor::hosts::terminal
