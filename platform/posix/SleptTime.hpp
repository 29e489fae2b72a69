// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vantor::platform::posix {

/// How long the machine has slept since it was started: what the boot clock is ahead of the monotonic one,
/// which stands still meanwhile (clock_gettime(2)). A host that sees it grow has come back from a suspend.
/// Any thread.
[[nodiscard]] std::chrono::nanoseconds sleptTime();

} // namespace vantor::platform::posix
