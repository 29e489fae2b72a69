// SPDX-License-Identifier: MIT
#include "sysinfo/program/UnameCommand.hpp"

#include "platform/core/PrintableText.hpp"
#include "sysinfo/CpuDetect/UnameReimplemented.hpp"
#include "sysinfo/program/Json.hpp"
#include "sysinfo/program/Output.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace vantor::sysinfo {

namespace {

using Uname = CpuDetect::UnameReimplemented;
using Letter = Uname::UnameCommandLineArgs;

/// What the options of the usual command are called, so that scripts need not know which one they run.
struct Name {
    const char* option;
    std::optional<Letter> letter; ///< absent: the operating system
    const char* help;
};
constexpr std::array<Name, 8> names{
    {{"-a,--all", Letter::a, "All of -snrvm"},
     {"-m,--machine", Letter::m, "The machine's hardware name"},
     {"-n,--nodename", Letter::n, "The network name"},
     {"-o,--operating-system", std::nullopt, "The operating system"},
     {"-p,--processor", Letter::p, "The processor's kind: i386, arm or powerpc"},
     {"-r,--kernel-release", Letter::r, "The kernel's release"},
     {"-s,--kernel-name", Letter::s, "The kernel's name; this is the default"},
     {"-v,--kernel-version", Letter::v, "The kernel's version"}}};

using Wanted = std::vector<std::optional<Letter>>;

/// In the order of the command line, each once; -a stands for its letters, and what else comes follows them.
Wanted wantedBy(const CLI::App& command) {
    Wanted wanted;
    const auto add = [&](std::optional<Letter> letter) {
        if (std::ranges::find(wanted, letter) == wanted.end()) {
            wanted.push_back(letter);
        }
    };
    for (const CLI::Option* given : command.parse_order()) {
        for (const Name& name : names) {
            if (given->check_sname(std::string(1, name.option[1]))) {
                add(name.letter);
            }
        }
    }
    if (std::ranges::find(wanted, std::optional(Letter::a)) != wanted.end()) {
        const Wanted others = std::exchange(wanted, {});
        std::ranges::for_each(Uname::allEquivalent(), add);
        std::ranges::for_each(others, add);
        std::erase(wanted, std::optional(Letter::a));
    }
    return wanted.empty() ? Wanted{Letter::defaultArg} : wanted;
}

/// The kernel by itself is no operating system.
std::string operatingSystem(const std::string& kernel) {
#ifdef __GLIBC__
    return kernel == "Linux" ? "GNU/Linux" : kernel;
#else
    return kernel;
#endif
}

std::optional<std::string> lineOf(const Wanted& wanted) {
    Uname::Letters letters{Letter::s};
    for (const auto& each : wanted) {
        letters.push_back(each.value_or(Letter::s));
    }
    const auto found = Uname::uname<Uname::Dictionary>(letters);
    if (!found) {
        return std::nullopt;
    }
    std::string line;
    for (const auto& each : wanted) {
        line += line.empty() ? "" : " ";
        line += each ? found->at(*each) : operatingSystem(found->at(Letter::s));
    }
    return line;
}

} // namespace

CLI::App& declareUname(CLI::App& app) {
    CLI::App& command = *app.add_subcommand("uname", "Print the system's names, in the order of the options");
    for (const Name& name : names) {
        command.add_flag(name.option, name.help);
    }
    return command;
}

int showUname(const CLI::App& command, bool json) {
    const auto line = lineOf(wantedBy(command));
    if (!line) {
        complain("the system does not tell all of its names");
        return 1;
    }
    put(json ? written(Json{{"uname", *line}}) : platform::printableText(*line, 4096) + "\n");
    return 0;
}

} // namespace vantor::sysinfo
