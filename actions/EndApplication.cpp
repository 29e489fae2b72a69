// SPDX-License-Identifier: MIT
#include "actions/EndApplication.hpp"

#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <array>

namespace vantor {

using platform::currentWorkloadControl;
using platform::EndSignal;
using platform::RunningProcess;

namespace {

/// This program and those that it runs in: a terminal, a shell.
bool holdsUs(int number) {
    constexpr int deepest = 64;
    int above = currentWorkloadControl().ownNumber();
    for (int steps = 0; above > 1 && steps < deepest; ++steps) {
        if (above == number) {
            return true;
        }
        const std::optional<RunningProcess> process = currentWorkloadControl().process(above);
        above = process ? process->parent : 0;
    }
    return false;
}

/// Whether another user's program started it, as a login does with a session's first process. What the first
/// process of the machine took over from somebody that ended is none of these.
bool isStartedByLogin(const RunningProcess& process) {
    const std::optional<RunningProcess> parent =
        process.parent > 1 ? currentWorkloadControl().process(process.parent) : std::nullopt;
    return parent && !parent->isThisUsers;
}

/// A display or what starts one: with it all its programs end. The user's service manager starts programs
/// too. In control groups of their own they are told by those.
bool runsSession(const std::string& program) {
    static constexpr std::array names = {"Hyprland",    "Xorg",         "Xwayland", "cage",   "dwl",
                                         "gnome-shell", "kwin_wayland", "labwc",    "niri",   "river",
                                         "sway",        "systemd",      "wayfire",  "weston", "xinit"};
    return std::ranges::find(names, program) != names.end();
}

/// The first process of a login's session, and what a server of logins or GNOME's display manager puts below
/// a first process of its own: the shell of a connection, the desktop. A window manager's children are none
/// of these, though they may lead sessions.
bool leadsLogin(const RunningProcess& process) {
    const std::optional<RunningProcess> parent =
        process.parent > 1 ? currentWorkloadControl().process(process.parent) : std::nullopt;
    const bool isBelowFirst =
        parent && (parent->program.starts_with("sshd") || parent->program.starts_with("gdm-"));
    return isStartedByLogin(process) || (isBelowFirst && isStartedByLogin(*parent));
}

bool isOurProgram(const std::string& name) {
    return name == "vantor" || name.starts_with("vantor-");
}

EndRefusal refusalFor(const RunningProcess& process) {
    const std::string& group = process.group;
    if (process.identity.number <= 1) {
        return EndRefusal::isSystem;
    }
    if (!process.isThisUsers) {
        return EndRefusal::isAnotherUsers;
    }
    const bool isApplications = group.starts_with("app.slice/") || group.starts_with("background.slice/");
    if (group.empty() ? leadsLogin(process) || runsSession(process.program) : !isApplications) {
        return EndRefusal::isSession;
    }
    const bool isOurs = isOurProgram(process.program) || holdsUs(process.identity.number);
    return isOurs ? EndRefusal::isOurs : EndRefusal::none;
}

bool isSame(const RunningProcess& a, const RunningProcess& b) {
    return a.identity.number == b.identity.number && a.identity.start == b.identity.start;
}

std::optional<std::uint64_t> available() {
    const std::optional<platform::MemoryLevel> level = currentWorkloadControl().memoryLevel();
    return level ? std::optional(level->available) : std::nullopt;
}

} // namespace

EndApplication::EndApplication(const platform::ApplicationUse& application, Pace pace)
    : m_pace(std::move(pace)),
      m_comesBack(application.memory + application.kernel),
      m_swap(application.swap),
      m_refusal(application.isService ? EndRefusal::isSession : look(application.processes)) {}

EndRefusal EndApplication::look(const std::vector<platform::ProcessIdentity>& processes) {
    for (const platform::ProcessIdentity& listed : processes) {
        const std::optional<RunningProcess> process = currentWorkloadControl().process(listed.number);
        if (!process || process->identity.start != listed.start) {
            continue;
        }
        if (const EndRefusal refusal = refusalFor(*process); refusal != EndRefusal::none) {
            return refusal;
        }
        m_listed.push_back(*process);
        if (!process->group.empty()) {
            m_groups.insert(process->group);
        }
    }
    return m_listed.empty() ? EndRefusal::isGone : EndRefusal::none;
}

/// Takes hold of what was listed and of what runs in the same groups now.
void EndApplication::hold() {
    std::vector<RunningProcess> wanted = m_listed;
    for (const std::string& group : m_groups) {
        for (const int number : currentWorkloadControl().processesIn(group)) {
            const std::optional<RunningProcess> process = currentWorkloadControl().process(number);
            if (process && process->group == group && refusalFor(*process) == EndRefusal::none) {
                wanted.push_back(*process);
            }
        }
    }
    for (const RunningProcess& process : wanted) {
        const bool isHeld =
            std::ranges::any_of(m_held, [&](const Held& held) { return isSame(held.process, process); });
        if (auto handle = isHeld ? nullptr : currentWorkloadControl().open(process)) {
            m_held.push_back({process, std::move(handle)});
        }
    }
}

void EndApplication::tell(EndSignal signal) {
    m_state.problems.clear();
    for (const Held& held : m_held) {
        if (const std::string problem = held.handle->signal(signal); !problem.empty()) {
            m_state.problems.push_back(platform::printableText(held.process.identity.name) + " (" +
                                       std::to_string(held.process.identity.number) + "): " + problem);
        }
    }
    m_state.told = m_held.size() - m_state.problems.size();
}

EndingState EndApplication::terminate() {
    if (m_refusal == EndRefusal::none && !m_asked) {
        m_state.availableBefore = available();
        hold();
        tell(EndSignal::terminate);
        m_asked = m_pace.now();
    }
    return state();
}

EndingState EndApplication::state() {
    m_state.left = static_cast<std::size_t>(
        std::ranges::count_if(m_held, [](const Held& held) { return held.handle->isRunning(); }));
    m_state.availableNow = available();
    return m_state;
}

bool EndApplication::mayKill() {
    return m_asked && m_pace.now() - *m_asked >= patience && state().left > 0;
}

EndingState EndApplication::kill() {
    if (mayKill()) {
        std::erase_if(m_groups, [&](const std::string& group) { // a new start of it has nothing to fear
            return std::ranges::none_of(m_held, [&](const Held& held) {
                return held.process.group == group && held.handle->isRunning();
            });
        });
        hold();
        tell(EndSignal::kill);
    }
    return state();
}

} // namespace vantor
