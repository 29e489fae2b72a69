// SPDX-License-Identifier: MIT
#include "hosts/command/SettingsWatch.hpp"

#include "hosts/command/CommandLine.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/SettingsOutput.hpp"
#include "hosts/common/FileWatch.hpp"
#include "hosts/common/HostMachine.hpp"
#include "platform/posix/Descriptor.hpp"
#include "platform/viewer/Viewer.hpp"

#include <poll.h>

#include <algorithm>
#include <cerrno>

namespace vantor::hosts::command {

namespace {

/// Waits until something can be read, or for so many milliseconds (-1: for ever).
void waitFor(int number, int milliseconds) {
    struct pollfd entry {};
    entry.fd = number;
    entry.events = POLLIN;
    (void)::poll(&entry, 1, milliseconds);
}

bool printLine(const SettingState& state, bool asJson) {
    print(asJson ? settingJson(state) + '\n' : settingLine(state));
    return printError() == 0;
}

} // namespace

int watchSettings(const std::vector<const Setting*>& wanted, bool asJson) {
    constexpr int pauseMilliseconds = 100; // a writer takes several steps
    const std::string path = platform::currentViewer().suitePath(sharedSuiteName);
    if (path.empty()) {
        complain("there is no home folder for the preferences");
        return refused;
    }
    common::FileWatch watch(path);
    std::vector<SettingState> last = settingStates();
    while (watch.error() == 0) {
        waitFor(watch.number(), -1);
        waitFor(-1, pauseMilliseconds);
        watch.settle();
        const std::vector<SettingState> now = settingStates();
        for (std::size_t i = 0; i < now.size(); ++i) {
            const bool changed = now[i].text() != last[i].text() || now[i].isStored != last[i].isStored;
            const bool isWanted = wanted.empty() || std::ranges::count(wanted, now[i].setting) > 0;
            if (changed && isWanted && !printLine(now[i], asJson)) {
                return done; // main tells what is wrong with standard output
            }
        }
        last = now;
    }
    complain(path + (watch.error() == ETIMEDOUT
                         ? common::noAnswer
                         : ": cannot be watched: " + platform::posix::errorText(watch.error())));
    return refused;
}

} // namespace vantor::hosts::command
