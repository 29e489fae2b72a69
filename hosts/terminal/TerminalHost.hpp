// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "hosts/terminal/picture/Picture.hpp"
#include "platform/machine/Machine.hpp"

#include <memory>
#include <string>
#include <vector>

namespace vantor::hosts::terminal {

/// The widget as this host runs it: the controller, the display mode, what the actions do and what there is
/// to tell beside the figures. Knows nothing of the terminal. Main thread.
class TerminalHost {
public:
    explicit TerminalHost(bool isExpanded);
    ~TerminalHost();
    TerminalHost(const TerminalHost&) = delete;
    TerminalHost& operator=(const TerminalHost&) = delete;

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
    /// The opener could not open the last link.
    void linkFailed(platform::Instant now);
    /// The widget is on screen again after a pause: fresh figures, timers from now on.
    void resume(platform::Instant now);

private:
    class Context;
    void tell(std::string text, platform::Instant now);
    void noteFailures();

    std::shared_ptr<Context> m_context;
    std::shared_ptr<TEReportTableViewController> m_controller;
    Scene m_scene;
    std::string m_notice;
    platform::Instant m_noticeEnd;
    std::string m_lastLink;
    std::vector<platform::SourceFailure> m_failures;
    bool m_isExpanded;
    bool m_changed = true;
    bool m_hasQuit = false;
};

} // namespace vantor::hosts::terminal
