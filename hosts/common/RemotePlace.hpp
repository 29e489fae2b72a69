// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/RemoteMachine.hpp"

#include <memory>

namespace vantor::hosts::common {

/// The one other machine behind the platform's calls in a process. Whichever machine is opened is shown by
/// it, since the samplers' counters must never fall. Main thread.
struct RemotePlace {
    std::unique_ptr<platform::remote::RemoteMachine> machine; ///< null before one was opened
};

} // namespace vantor::hosts::common
