// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

namespace vantor::hosts::widget {

/// Tells when a widget whose view was just loaded has every figure, and none that covers more than the time
/// since: the first share of the processor covers all the time since the machine was started. So a second one
/// is asked for, two seconds after the first, where the user's interval is longer than that. Takes the
/// controller's report handler while it lives. Main thread.
class Readiness {
public:
    explicit Readiness(TEReportTableViewController& controller);
    ~Readiness();
    Readiness(const Readiness&) = delete;
    Readiness& operator=(const Readiness&) = delete;

    [[nodiscard]] bool isReached() const;

private:
    TEReportTableViewController& m_controller;
    std::shared_ptr<platform::NSTimer> m_second; ///< null where the widget's own timer is soon enough
    int m_shares = 0;                            ///< of the processor's time that were reported
};

} // namespace vantor::hosts::widget
