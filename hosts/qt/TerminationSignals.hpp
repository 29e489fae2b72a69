// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::qt {

/// While it lives, SIGTERM, SIGINT and SIGHUP end the application's event loop, so that the program leaves by
/// the door. A second one ends the process at once. One per process.
class TerminationSignals {
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
};

} // namespace vantor::hosts::qt
