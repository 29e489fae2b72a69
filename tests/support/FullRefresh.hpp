// SPDX-License-Identifier: MIT
#pragma once

#include "controller/ReportInterface.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/user/LinuxViewer.hpp"
#include "platform/time/RunLoop.hpp"

#include <memory>
#include <utility>

namespace vantor::tests {

/// The whole widget on a Linux machine, everything on the calling thread, so that one refresh can be counted
/// and timed. Only one at a time.
class FullRefresh {
public:
    explicit FullRefresh(platform::linux::LinuxMachine::Options machine = {},
                         platform::linux::ViewerOptions viewer = {})
        : m_machine(std::move(machine)), m_viewer(std::move(viewer)) {
        m_controller->setReportHandler([this](platform::Source /*source*/) { ++m_reports; });
        m_controller->view(); // its own first refresh finds what is costly to find
        finish(3);
    }
    ~FullRefresh() { platform::RunLoop::main().clear(); } // the timers hold the controller
    FullRefresh(const FullRefresh&) = delete;
    FullRefresh& operator=(const FullRefresh&) = delete;

    /// Storage, memory, processor and network, each sampled, formatted and displayed.
    void refresh() {
        m_controller->makeReports();
        m_controller->reportNETWORKStatus();
        finish(4);
    }
    [[nodiscard]] TEReportTableViewController& controller() { return *m_controller; }
    [[nodiscard]] platform::linux::LinuxMachine& machine() { return m_machine; }

private:
    void finish(unsigned reports) {
        m_reports = 0;
        m_loop.turnUntil([this, reports] { return m_reports >= reports; }, 0);
    }

    platform::linux::LinuxMachine m_machine;
    platform::linux::LinuxViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
    hosts::common::VirtualTime m_loop;
    std::shared_ptr<TEReportTableViewController> m_controller = ReportInterface::instantiate();
    unsigned m_reports = 0;
};

} // namespace vantor::tests
