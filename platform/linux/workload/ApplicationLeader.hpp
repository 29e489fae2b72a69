// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/workload/WorkText.hpp"

#include <map>

namespace vantor::platform::linux {

/// A user's processes, by number.
using ProcessTable = std::map<int, ProcessStat>;

/// The process that stands for its application, where no group tells: the topmost ancestor among these
/// processes below a session's leader. A shell in a terminal leads a session of its own, so that what runs in
/// it stands for itself. So does what a login's session, such as a plain window manager, starts in a session
/// of its own without a terminal; that one's children belong to it.
[[nodiscard]] int applicationLeader(const ProcessTable& processes, int process);

} // namespace vantor::platform::linux
