// SPDX-License-Identifier: MIT
#include "hosts/terminal/TerminalHost.hpp"

#include "controller/ReportInterface.hpp"
#include "controller/Sections.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/terminal/SceneReader.hpp"
#include "hosts/terminal/screen/LinkOpener.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <chrono>
#include <utility>

namespace vantor::hosts::terminal {

using platform::Instant;
using platform::NCWidgetDisplayMode;
using platform::NSLocalizedString;

namespace {

constexpr std::chrono::seconds noticeTime{3};
constexpr platform::CGSize widgetRoom{320, 110}; // points; a terminal's cells are laid out by their own rules

std::string nameOf(platform::Source source) {
    const Section* const section = sectionOf(source);
    return section != nullptr ? NSLocalizedString(section->headingKey) : std::string(sourceName(source));
}

} // namespace

/// The widget's host as the widget sees it.
class TerminalHost::Context final : public platform::NSExtensionContext {
public:
    explicit Context(TerminalHost& host) : m_host(host) {}

    void openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) override {
        m_host.m_lastLink = url.absoluteString();
        const bool opened = openLink(m_host.m_lastLink);
        if (!opened) {
            m_host.linkFailed(platform::RunLoop::main().now());
        }
        if (completionHandler) {
            completionHandler(opened);
        }
    }

private:
    TerminalHost& m_host;
};

TerminalHost::TerminalHost(bool isExpanded)
    : m_context(std::make_shared<Context>(*this)),
      m_controller(ReportInterface::instantiate()),
      m_isExpanded(isExpanded) {
    m_controller->setExtensionContext(m_context);
    m_controller->setReportHandler([this](platform::Source) { noteFailures(); });
    m_controller->view()->setChangeHandler([this](platform::UIView&) { m_changed = true; });
    m_controller->widgetActiveDisplayModeDidChange(
        isExpanded ? NCWidgetDisplayMode::expanded : NCWidgetDisplayMode::compact, widgetRoom);
    m_controller->widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
}

TerminalHost::~TerminalHost() {
    m_controller->setReportHandler({});
    m_controller->view()->setChangeHandler({});
    m_controller->setExtensionContext(nullptr);
}

const Scene& TerminalHost::sceneAt(Instant now) {
    m_scene = sceneOf(*m_controller, m_isExpanded);
    if (now < m_noticeEnd) {
        m_scene.notice = m_notice;
    }
    for (const platform::SourceFailure& failure : m_failures) {
        m_scene.warning += m_scene.warning.empty() ? "" : "   ";
        m_scene.warning += nameOf(failure.source) + ": " + NSLocalizedString("host_UNAVAILABLE") + " (" +
                           failure.reason + ")";
    }
    return m_scene;
}

bool TerminalHost::takeChange() {
    return std::exchange(m_changed, false);
}

bool TerminalHost::hasFigures() const {
    const ReportRecords& records = m_controller->records();
    return records.memory && records.storage && records.processor;
}

std::optional<Instant> TerminalHost::noticeEnd() const {
    return m_notice.empty() ? std::nullopt : std::optional(m_noticeEnd);
}

void TerminalHost::perform(Action action, Instant now) {
    if (const auto* const source = std::get_if<platform::Source>(&action)) {
        const ActionOutlet& asked = sectionOf(*source)->action;
        ((*m_controller).*asked.action)(this);
        if (asked.action == &TEReportTableViewController::manualInfoRefresh) {
            tell(NSLocalizedString("host_REFRESHED"), now);
        }
    } else if (std::get<HostAction>(action) == HostAction::quit) {
        m_hasQuit = true;
    } else {
        m_isExpanded = !m_isExpanded;
        m_controller->widgetActiveDisplayModeDidChange(
            m_isExpanded ? NCWidgetDisplayMode::expanded : NCWidgetDisplayMode::compact, widgetRoom);
    }
    m_changed = true;
}

void TerminalHost::linkFailed(Instant now) {
    tell(platform::textWithValue(NSLocalizedString("host_NOHANDLER"), "link", m_lastLink), now);
}

void TerminalHost::tell(std::string text, Instant now) {
    m_notice = std::move(text);
    m_noticeEnd = now + noticeTime;
    m_changed = true;
}

void TerminalHost::noteFailures() {
    std::vector<platform::SourceFailure> failures = hosts::common::currentFailures();
    if (failures != m_failures) {
        m_failures = std::move(failures);
        m_changed = true;
    }
}

void TerminalHost::resume(Instant now) {
    platform::RunLoop::main().restartTimers(now);
    m_controller->widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
    m_controller->makeReports();
    m_controller->resumeNETWORKStatus(); // the next tick's rate covers a second, not the pause
    m_changed = true;
}

} // namespace vantor::hosts::terminal
