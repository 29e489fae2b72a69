// SPDX-License-Identifier: MIT
#include "sysinfo/program/CommandLine.hpp"

#include "platform/core/PrintableText.hpp"
#include "sysinfo/program/Json.hpp"
#include "sysinfo/program/Recording.hpp"
#include "sysinfo/program/Report.hpp"
#include "sysinfo/program/Values.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace vantor::sysinfo {

namespace {

using Uname = CpuDetect::UnameReimplemented;
using Letter = Uname::UnameCommandLineArgs;

constexpr int absentValue = 1;
constexpr int badUsage = 2;

struct LetterOption {
    char letter;
    Letter value;
    const char* help;
};
constexpr std::array<LetterOption, 7> letterOptions{
    {{'a', Letter::a, "All of -snrvm"},
     {'m', Letter::m, "The machine's hardware name"},
     {'n', Letter::n, "The network name"},
     {'p', Letter::p, "The processor's kind: i386, arm or powerpc"},
     {'r', Letter::r, "The kernel's release"},
     {'s', Letter::s, "The kernel's name; this is the default"},
     {'v', Letter::v, "The kernel's version"}}};

struct Options {
    bool json = false;
    bool noGpu = false;
    bool verbose = false;
    std::string record;
    std::string replay;
    std::vector<std::string> keys;
    std::string tree;
};

void complain(const std::string& what) {
    std::fprintf(stderr, "vantor-sysinfo: %s\n", what.c_str());
}

void put(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

/// A value as one line of a terminal. Tabs separate the numbers of some kernel values.
std::string oneLine(std::string value) {
    std::ranges::replace(value, '\t', ' ');
    return platform::printableText(value, 4096);
}

/// The libraries' log lines go where they do not mix with the answer.
void setPrinters(bool verbose) {
    CpuDetect::GeneralPrinter::enabled = verbose;
    CpuDetect::GeneralPrinter::output = stderr;
    SystemValues::GeneralPrinter::enabled = verbose;
    SystemValues::GeneralPrinter::output = stderr;
}

int showPage(const Options& options, AskedGpu& gpu) {
    const bool live = options.replay.empty();
    const bool wantsGpu = !options.noGpu && (live || Replay::hasGpu());
    const Report report = Report::ofThisMachine({wantsGpu, live || Replay::hasProcessor()});
    if (wantsGpu) {
        gpu = report.gpu;
    }
    put(options.json ? jsonOf(report) : pageOf(report));
    return 0;
}

int showUname(const Options& options, const CLI::App& command) {
    Uname::Letters letters;
    for (const CLI::Option* given : command.parse_order()) {
        for (const LetterOption& each : letterOptions) {
            if (given->check_sname(std::string(1, each.letter))) {
                letters.push_back(each.value);
            }
        }
    }
    const auto line = Uname::uname(letters);
    if (!line) {
        complain("the system does not tell all of its names");
        return absentValue;
    }
    put(options.json ? written(Json{{"uname", *line}}) : platform::printableText(*line, 4096) + "\n");
    return 0;
}

int showKeys(const Options& options) {
    std::vector<std::pair<std::string, std::string>> found;
    int result = 0;
    for (const std::string& key : options.keys) {
        if (auto value = valueOf(key)) {
            found.emplace_back(key, *std::move(value));
        } else {
            complain("no value: " + platform::printableText(key));
            result = absentValue;
        }
    }
    if (!options.tree.empty()) {
        const auto below = tree(options.tree, !options.replay.empty());
        found.insert(found.end(), below.begin(), below.end());
        if (below.empty()) {
            complain("nothing at or below: " + platform::printableText(options.tree));
            result = absentValue;
        }
    }
    Json json = Json::object();
    for (const auto& [key, value] : found) {
        if (options.json) {
            json[key] = value;
        } else {
            put(platform::printableText(key) + " = " + oneLine(value) + "\n");
        }
    }
    if (options.json) {
        put(written(json));
    }
    return result;
}

void declare(CLI::App& app, Options& options) {
    app.add_flag("--json", options.json, "Answer in JSON, for programs");
    app.add_flag("--no-gpu", options.noGpu, "Do not ask the graphics device");
    app.add_flag("--verbose", options.verbose, "Show the libraries' log lines on standard error");
    auto* const record =
        app.add_option("--record", options.record, "Write what the machine answered to a file");
    app.add_option("--replay", options.replay, "Show the machine that a file was recorded on")
        ->excludes(record);
    record->type_name("FILE");
    app.get_option("--replay")->type_name("FILE");
    app.set_version_flag("--version", "vantor-sysinfo " VANTOR_VERSION);
    app.require_subcommand(0, 1);
    app.fallthrough();
}

CLI::App& declareUname(CLI::App& app) {
    CLI::App& command = *app.add_subcommand("uname", "Print the system's names, in the order of the letters");
    for (const LetterOption& each : letterOptions) {
        command.add_flag(std::string("-") + each.letter, each.help);
    }
    return command;
}

CLI::App& declareSysctl(CLI::App& app, Options& options) {
    CLI::App& command = *app.add_subcommand("sysctl", "Print kernel values by name");
    auto* const names = command.add_option("NAME", options.keys, "Keys such as hw.memsize or vm.swappiness");
    auto* const below = command.add_option("--tree", options.tree, "Everything at or below a name");
    below->type_name("NAME");
    names->type_name("");
    command.callback([names, &options] {
        if (names->count() == 0 && options.tree.empty()) {
            throw CLI::RequiredError("sysctl: a NAME or --tree");
        }
    });
    return command;
}

int answer(const Options& options, const CLI::App& uname, const CLI::App& sysctl) {
    setPrinters(options.verbose);
    std::string why;
    if (!options.replay.empty()) {
        const auto recording = fileContent(options.replay, why);
        if (!recording || !Replay::start(*recording, why)) {
            complain(platform::printableText(options.replay) + ": " + why);
            return badUsage;
        }
    }
    AskedGpu gpu;
    const int result = uname.parsed()    ? showUname(options, uname)
                       : sysctl.parsed() ? showKeys(options)
                                         : showPage(options, gpu);
    if (!options.record.empty()) {
        if (const auto failure = writeFile(options.record, recorded(gpu))) {
            complain(platform::printableText(options.record) + ": " + *failure);
            return badUsage;
        }
    }
    if (std::fflush(stdout) != 0) {
        complain("standard output cannot be written");
        return badUsage;
    }
    return result;
}

} // namespace

int run(int count, const char* const* arguments) {
    CLI::App app("Shows what this machine is made of: processor, caches, memory, graphics and system.",
                 "vantor-sysinfo");
    Options options;
    declare(app, options);
    const CLI::App& uname = declareUname(app);
    const CLI::App& sysctl = declareSysctl(app, options);
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& shown) {
        return app.exit(shown); // --help and --version
    } catch (const CLI::ParseError& error) {
        complain(error.what());
        std::fputs("Run with --help for more information.\n", stderr);
        return badUsage;
    }
    return answer(options, uname, sysctl);
}

} // namespace vantor::sysinfo
