// SPDX-License-Identifier: MIT
#include "hosts/terminal/TerminalHost.hpp"

#include "controller/ReportInterface.hpp"
#include "controller/Sections.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/WidgetSizes.hpp"
#include "hosts/terminal/SceneReader.hpp"
#include "hosts/terminal/TimedSources.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace vantor::hosts::terminal {

using platform::Instant;
using platform::NCWidgetDisplayMode;
using platform::NSLocalizedString;

namespace {

constexpr std::chrono::seconds noticeTime{3};
// In points; a terminal's cells are laid out by rules of their own.
constexpr platform::CGSize compactRoom{320, common::compactHeight};
constexpr platform::CGSize expandedRoom{320, 500};

std::string nameOf(platform::Source source) {
    const Section* const section = sectionOf(source);
    return section != nullptr ? NSLocalizedString(section->headingKey) : std::string(sourceName(source));
}

bool isLink(const Action& action) {
    const auto* const source = std::get_if<platform::Source>(&action);
    return source != nullptr &&
           sectionOf(*source)->action.action != &TEReportTableViewController::manualInfoRefresh;
}

/// Where nothing can open a link, such as over SSH, neither a key nor a ring offers one.
void leaveLinksOut(Scene& scene) {
    std::erase_if(scene.keys, [](const Scene::Key& key) { return isLink(key.action); });
    for (Scene::Section& section : scene.sections) {
        if (section.action && isLink(*section.action)) {
            section.action.reset();
        }
    }
}

} // namespace

TerminalHost::TerminalHost(std::string name, std::optional<double> interval, bool isExpanded,
                           common::LinkOpener::Programs programs)
    : m_name(std::move(name)),
      m_interval(interval),
      m_context(std::make_shared<common::WidgetContext>(
          [this](const std::string& line) { tell(line, platform::RunLoop::main().now()); },
          std::move(programs))),
      m_controller(ReportInterface::instantiate()) {
    m_controller->setExtensionContext(m_context);
    m_controller->setReportHandler([this](platform::Source source) {
        m_refreshing.erase(source);
        noteFailures();
    });
    m_controller->view()->setChangeHandler([this](platform::UIView&) { m_changed = true; });
    keepInterval();
    setMode(isExpanded);
    if (m_context->canOpenLinks()) {
        m_context->askForProgram([this](bool isThere) {
            m_changed = m_changed || isThere != m_appIsThere;
            m_appIsThere = isThere;
        });
    }
    m_controller->widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
}

TerminalHost::~TerminalHost() {
    if (m_node != nullptr) {
        m_node->setHandler({});
    }
    m_controller->setReportHandler({});
    m_controller->view()->setChangeHandler({});
    m_controller->setExtensionContext(nullptr);
    m_controller->endReports(); // the main loop may go on, with a wall
    if (m_ownTimer != nullptr) {
        m_ownTimer->invalidate();
    }
}

void TerminalHost::follow(common::RemoteNode& node) {
    m_node = &node;
    node.setHandler([this] { m_changed = true; });
}

void TerminalHost::turn(Instant now) {
    if (m_pauses.isOver(now)) {
        if (m_node == nullptr) { // another machine's figures count no pause, and it is to be asked at once
            common::resumeWidget(*m_controller, now);
        }
        m_changed = true;
    }
    platform::RunLoop::main().turn(now);
    if (m_node != nullptr && m_heading != m_node->heading()) {
        m_changed = true; // its age goes on by itself
    }
}

const Scene& TerminalHost::sceneAt(Instant now) {
    const bool isSilent = m_node != nullptr && m_node->moment().downSince;
    const std::vector<platform::SourceFailure> failures =
        isSilent ? std::vector<platform::SourceFailure>() : m_failures; // the heading tells it once for all
    m_scene = sceneOf(*m_controller, failures, m_isExpanded);
    m_scene.isPale = isSilent;
    m_heading = m_node != nullptr ? m_node->heading() : m_name;
    m_scene.host = m_heading;
    m_scene.isElsewhere = m_node != nullptr;
    if (!m_context->offersExpanded()) {
        std::erase_if(m_scene.keys,
                      [](const Scene::Key& key) { return key.action == Action(HostAction::changeMode); });
    }
    if (!m_context->canOpenLinks() || m_node != nullptr) { // what they open is this machine's
        leaveLinksOut(m_scene);
    }
    if (m_offersBack) {
        constexpr char escape = '\033';
        m_scene.keys.insert(m_scene.keys.end() - 1,
                            {escape, NSLocalizedString("wall_BACK"), HostAction::goBack, false, "Esc"});
    }
    for (Scene::Key& key : m_scene.keys) {
        key.isQuiet = !m_appIsThere && isLink(key.action);
    }
    if (now < m_noticeEnd) {
        m_scene.notice = m_notice;
    }
    for (const platform::SourceFailure& failure : failures) {
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
    return std::ranges::all_of(sections, [this](const Section& section) {
        return !section.chart || vantor::hasFigures(*m_controller, section); // the rest comes a second later
    });
}

std::optional<Instant> TerminalHost::noticeEnd() const {
    return m_notice.empty() ? std::nullopt : std::optional(m_noticeEnd);
}

void TerminalHost::perform(Action action, Instant now) {
    if (const auto* const source = std::get_if<platform::Source>(&action)) {
        const ActionOutlet& asked = sectionOf(*source)->action;
        if (asked.action != &TEReportTableViewController::manualInfoRefresh) {
            ((*m_controller).*asked.action)(this);
        } else if (m_refreshing.empty()) { // a key that is held down asks for one refresh at a time
            m_refreshing = timedSources();
            ((*m_controller).*asked.action)(this);
            keepInterval(); // the controller has set its own timer anew
            tell(NSLocalizedString("host_REFRESHED"), now);
        }
    } else if (std::get<HostAction>(action) == HostAction::quit) {
        m_hasQuit = true;
    } else if (std::get<HostAction>(action) == HostAction::goBack) {
        m_goesBack = true;
    } else {
        setMode(!m_isExpanded);
    }
    m_changed = true;
}

void TerminalHost::setMode(bool isExpanded) {
    m_isExpanded = isExpanded && m_context->offersExpanded();
    m_controller->widgetActiveDisplayModeDidChange(m_isExpanded ? NCWidgetDisplayMode::expanded
                                                                : NCWidgetDisplayMode::compact,
                                                   m_isExpanded ? expandedRoom : compactRoom);
}

void TerminalHost::keepInterval() {
    if (!m_interval) {
        return;
    }
    m_controller->refreshTime()->invalidate();
    if (m_ownTimer != nullptr) {
        m_ownTimer->invalidate();
    }
    m_ownTimer = platform::NSTimer::scheduledTimerWithTimeInterval(
        *m_interval, [controller = m_controller] { controller->makeReports(); }, true);
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

} // namespace vantor::hosts::terminal
