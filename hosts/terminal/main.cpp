// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"
#include "hosts/common/FleetHost.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "hosts/terminal/FleetPrintSession.hpp"
#include "hosts/terminal/Options.hpp"
#include "hosts/terminal/PrintSession.hpp"
#include "hosts/terminal/TerminalSession.hpp"
#include "platform/core/MakeForEver.hpp"
#include "platform/core/StandardOutput.hpp"

#include <malloc.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace vantor;

/// What machines read is the same everywhere: those formats run without the user's locale.
bool usesLocale(const hosts::terminal::Options& options) {
    using hosts::terminal::Format;
    const Format format = options.format.value_or(Format::text);
    return !options.wantsPrint() || format == Format::text || format == Format::waybar;
}

/// Standard output belongs to the picture or the reading, so the log goes elsewhere. On a terminal with a
/// picture on it nothing else may be written: without a file, the log is dropped there.
bool redirectLog(const std::string& file, bool hasPicture) {
    const char* const name = !file.empty() ? file.c_str() : "/dev/null";
    const bool usesFile = !file.empty() || (hasPicture && ::isatty(STDERR_FILENO) != 0);
    std::FILE* const log = usesFile ? std::fopen(name, "ae") : hosts::common::unhurriedStream(STDERR_FILENO);
    if (log == nullptr) {
        std::fprintf(stderr, "vantor-term: --log %s: %s\n", name, std::strerror(errno));
        return false;
    }
    platform::setStandardOutput(log);
    return true;
}

/// A wall stands before its machines are known, so nothing is waited for.
int runFleet(const hosts::terminal::Options& options, bool hasPicture) {
    // Workers may be asking an opened machine while the program ends.
    auto& fleet = platform::makeForEver<hosts::common::FleetHost>(options.fleet);
    if (!fleet.open("vantor-term")) {
        return 1;
    }
    platform::makeForEver<hosts::common::HostMachine>(false, usesLocale(options));
    if (!hasPicture) {
        return hosts::terminal::printFleet(options, options.fleet, fleet);
    }
    const hosts::terminal::TerminalSignals signals;
    return hosts::terminal::runTerminal(options, signals, fleet);
}

int run(const hosts::terminal::Options& options) {
    const bool hasPicture = !options.wantsPrint() && ::isatty(STDOUT_FILENO) != 0;
    if (!redirectLog(options.log, hasPicture)) {
        return 2;
    }
    hosts::common::letWritesFail();
    if (options.fleet.isWall()) {
        return runFleet(options, hasPicture);
    }
    // Workers may be asking it while the program ends.
    hosts::common::RemoteNode* node = nullptr;
    if (options.node.isOther()) {
        node = &platform::makeForEver<hosts::common::RemoteNode>(options.node);
        // What watches may be started before the network is there.
        if (!node->await("vantor-term", options.watch)) {
            return 1;
        }
    }
    if (node != nullptr) {
        platform::makeForEver<hosts::common::HostMachine>(node->machine(), usesLocale(options));
    } else {
        platform::makeForEver<hosts::common::HostMachine>(options.demo, usesLocale(options));
    }
    if (!hasPicture) {
        return hosts::terminal::printReadings(options, node);
    }
    const hosts::terminal::TerminalSignals signals;
    hosts::common::Complaints("vantor-term").tellStore(); // found again above the picture, once that is gone
    return hosts::terminal::runTerminal(options, signals, node);
}

} // namespace

int main(int count, char** arguments) {
    hosts::common::holdClosedStreams();
    ::mallopt(M_ARENA_MAX, 1); // the workers allocate a handful of bytes: one heap is enough for all threads
    const hosts::terminal::ParsedOptions parsed = hosts::terminal::parseOptions(count, arguments);
    const int status = parsed.exitStatus ? *parsed.exitStatus : run(parsed.options);
    std::fflush(nullptr);
    // Not through the destructors of static objects: a worker may still be inside a file system that hangs.
    std::_Exit(status);
}
