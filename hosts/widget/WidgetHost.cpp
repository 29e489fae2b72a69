// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetHost.hpp"

#include "controller/ReportInterface.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/WidgetSizes.hpp"

#include <utility>

namespace vantor::hosts::widget {

using platform::Instant;
using platform::NCWidgetDisplayMode;
using platform::RunLoop;

WidgetHost::WidgetHost(Programs programs, qt::LoopDriver::Clock clock)
    : m_context(std::make_shared<common::WidgetContext>([this](const std::string& line) { tell(line); },
                                                        std::move(programs))),
      m_controller(ReportInterface::instantiate()),
      m_loop([this](Instant now) { turn(now); }, std::move(clock)) {
    m_controller->setExtensionContext(m_context);
    m_controller->view();
    m_card = std::make_unique<WidgetCard>(m_controller);
    m_controller->setPreferredContentSizeHandler([this](platform::CGSize) { fit(); });
    m_controller->setReportHandler([this](platform::Source source) {
        if (source == platform::Source::memory) {
            m_card->nameActions(); // a preference may have changed what its button does
        }
    });
}

WidgetHost::~WidgetHost() {
    m_loop.stop();
    m_controller->setReportHandler({});
    m_controller->setPreferredContentSizeHandler({});
    m_controller->setExtensionContext(nullptr);
    m_controller->endReports();
    if (m_node == nullptr) { // else whoever watches machines goes on in the same loop
        RunLoop::main().clear();
    }
}

void WidgetHost::setTheme(const qt::Theme& theme) {
    m_card->setTheme(theme);
    fit();
}

void WidgetHost::setMode(NCWidgetDisplayMode mode, double tallest) {
    const bool canExpand = m_context->offersExpanded();
    m_mode = canExpand ? mode : NCWidgetDisplayMode::compact;
    const bool expanded = m_mode == NCWidgetDisplayMode::expanded;
    m_card->setCanExpand(canExpand);
    m_card->setExpanded(expanded);
    m_controller->widgetActiveDisplayModeDidChange(
        m_mode, {m_card->neededWidth(), expanded ? tallest : common::compactHeight});
    fit();
}

void WidgetHost::fit() {
    platform::CGSize size = m_controller->preferredContentSize();
    if (size.height <= 0) {
        return; // before the first mode
    }
    size.height += m_card->lineHeight();
    if (m_resized) {
        m_resized(size);
    } else {
        m_card->setContentSize(size);
    }
}

void WidgetHost::setActive(bool active) {
    if (active == m_loop.isRunning()) {
        return;
    }
    if (!active) {
        m_loop.stop();
        m_pauses.begin();
        return;
    }
    if (m_node == nullptr) { // the app may have been installed meanwhile
        m_context->askForProgram([this](bool isThere) { m_card->setAppIsThere(isThere); });
    }
    if (!std::exchange(m_started, true)) {
        m_controller->widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
    }
    m_loop.start();
}

void WidgetHost::turn(Instant now) {
    // Another machine tells of its last interval whenever it is asked, so nothing that fell due meanwhile
    // would count a pause; and it is to be asked at once.
    if (m_pauses.isOver(now) && m_node == nullptr) {
        common::resumeWidget(*m_controller, now);
    }
    RunLoop::main().turn(now);
    update();
    if (m_turned) {
        m_turned();
    }
}

void WidgetHost::tell(const std::string& line) {
    if (m_tells) {
        m_tells();
    }
    m_card->showMessage(QString::fromStdString(line));
}

void WidgetHost::follow(const common::RemoteNode& node) {
    m_node = &node;
    m_context->leaveLinksAlone();
    m_card->leaveTargetsAlone();
    m_card->showLine(QString::fromStdString(node.heading()));
    fit();
}

void WidgetHost::update() {
    m_card->flush();
    if (m_node == nullptr) {
        m_card->showFailures(common::currentFailures());
        return;
    }
    const bool isSilent = m_node->moment().downSince.has_value();
    m_card->showLine(QString::fromStdString(m_node->heading()));
    m_card->setPale(isSilent);
    m_card->showFailures(isSilent ? std::vector<platform::SourceFailure>() : common::currentFailures());
}

} // namespace vantor::hosts::widget
