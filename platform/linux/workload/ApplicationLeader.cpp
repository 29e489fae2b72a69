// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ApplicationLeader.hpp"

#include <cstddef>

namespace vantor::platform::linux {

namespace {

using Place = ProcessTable::const_iterator;

bool leadsSession(Place process) {
    return process->second.session == process->first;
}

/// Whether it runs in the session that a login made: the first of its ancestors there was started by another
/// user's process, such as a display manager or `login`. Daemons have the first process of the machine above
/// them.
bool isOfLogin(const ProcessTable& processes, Place process) {
    for (std::size_t steps = 0; steps < processes.size(); ++steps) {
        const Place parent = processes.find(process->second.parent);
        if (parent == processes.end()) {
            return process->second.parent > 1;
        }
        if (parent->second.session != process->second.session) {
            return false;
        }
        process = parent;
    }
    return false;
}

/// Whether a window manager or the like started it as an application. Window managers give each its own
/// session, as dwm, xmonad and others do, though they need lead none themselves: below startx the shell at
/// the console does. What a server of logins runs leads the login instead.
bool isStartedAsApplication(const ProcessTable& processes, Place process) {
    const Place parent = processes.find(process->second.parent);
    return leadsSession(process) && !process->second.hasTerminal && parent != processes.end() &&
           !parent->second.name.starts_with("sshd") && isOfLogin(processes, parent);
}

} // namespace

int applicationLeader(const ProcessTable& processes, int process) {
    Place leader = processes.find(process);
    for (std::size_t steps = 0; leader != processes.end() && steps < processes.size(); ++steps) {
        const Place parent = processes.find(leader->second.parent);
        // The first process of a container leads a session that cannot be seen from inside.
        if (parent == processes.end() || parent->first == 1 || isStartedAsApplication(processes, leader) ||
            (leadsSession(parent) && !isStartedAsApplication(processes, parent))) {
            return leader->first;
        }
        leader = parent;
    }
    return process;
}

} // namespace vantor::platform::linux
