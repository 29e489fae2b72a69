// SPDX-License-Identifier: MIT
#include "sysinfo/program/CommandLine.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/posix/FileReplacement.hpp"
#include "sysinfo/SystemValues/PlainFile.hpp"
#include "sysinfo/SystemValues/Replay.hpp"
#include "sysinfo/program/Json.hpp"
#include "sysinfo/program/Output.hpp"
#include "sysinfo/program/PageText.hpp"
#include "sysinfo/program/SysctlCommand.hpp"
#include "sysinfo/program/UnameCommand.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

namespace vantor::sysinfo {

namespace {

using SystemValues::Recording;
using SystemValues::Replay;

constexpr int notWritten = 1;
constexpr int badUsage = 2;

struct Options {
    bool json = false;
    bool noGpu = false;
    bool verbose = false;
    std::string record;
    std::string replay;
    SysctlOptions sysctl;
};

/// The libraries' log lines go where they do not mix with the answer.
void setPrinters(bool verbose) {
    CpuDetect::GeneralPrinter::enabled = verbose;
    CpuDetect::GeneralPrinter::output = stderr;
    SystemValues::GeneralPrinter::enabled = verbose;
    SystemValues::GeneralPrinter::output = stderr;
}

/// Absent, after a complaint, where there is none.
std::optional<Recording> readRecording(const std::string& path) {
    const SystemValues::PlainFile file = SystemValues::PlainFile::read(path);
    std::string why = file.error.message();
    std::optional<Recording> recording;
    if (!file.error) {
        recording = Recording::fromText(file.bytes, why);
    }
    if (!recording) {
        complain(platform::printableText(path) + ": " + why);
    }
    return recording;
}

/// False, after a complaint, where the file was not written; it is as it was then.
bool writeRecording(const std::string& path, std::optional<Recording::Device> device) {
    Recording recording = Recording::ofThisMachine();
    recording.device = std::move(device);
    std::error_code error;
    const std::string whole = std::filesystem::absolute(path, error).string();
    const auto failure = platform::posix::replaceFile(whole, recording.text());
    if (failure) {
        complain(platform::printableText(*failure, 4096));
    }
    return !failure;
}

/// The graphics device where it was asked for.
std::optional<Recording::Device> showPage(const Options& options, const std::optional<Recording>& recording) {
    const bool asksGpu = !options.noGpu && (!recording || recording->device);
    const Page page = Page::read(asksGpu);
    put(options.json ? pageJson(page) : pageText(page, Look::ofStandardOutput()));
    if (!asksGpu) {
        return std::nullopt;
    }
    return page.gpu ? Recording::Device({page.gpu->name, page.gpu->vram, 0, page.gpu->hasUnifiedMemory})
                    : Recording::Device();
}

int answer(const Options& options, const CLI::App& uname, const CLI::App& sysctl) {
    setPrinters(options.verbose);
    std::optional<Recording> recording;
    std::optional<Replay> replay;
    if (!options.replay.empty()) {
        recording = readRecording(options.replay);
        if (!recording) {
            return badUsage;
        }
        replay.emplace(*recording);
    }
    int result = 0;
    std::optional<Recording::Device> device;
    if (uname.parsed()) {
        result = showUname(uname, options.json);
    } else if (sysctl.parsed()) {
        result = showSysctl(options.sysctl, options.json);
    } else {
        device = showPage(options, recording);
    }
    if (!options.record.empty() && !writeRecording(options.record, std::move(device))) {
        return badUsage;
    }
    return result;
}

/// What was printed must have arrived.
int finished(int result) {
    if (!wasWritten()) {
        complain("standard output cannot be written");
        return notWritten;
    }
    return result;
}

void declare(CLI::App& app, Options& options) {
    app.add_flag("--json", options.json, "Answer in JSON, for programs");
    app.add_flag("--no-gpu", options.noGpu, "Do not ask the graphics device");
    app.add_flag("--verbose", options.verbose, "Show the libraries' log lines on standard error");
    const CLI::Validator named([](const std::string& path) { return path.empty() ? "no file is named" : ""; },
                               "");
    auto* const record =
        app.add_option("--record", options.record, "Write what the machine answered to a file");
    auto* const replay =
        app.add_option("--replay", options.replay, "Show the machine that a file was recorded on");
    for (CLI::Option* const option : {record, replay}) {
        option->type_name("FILE")->check(named);
    }
    replay->excludes(record);
    app.set_version_flag("--version", "vantor-sysinfo " VANTOR_VERSION);
    app.require_subcommand(0, 1);
    app.fallthrough();
}

} // namespace

int run(int count, const char* const* arguments) {
    CLI::App app("Shows what this machine is made of: processor, caches, memory, graphics and system.",
                 "vantor-sysinfo");
    Options options;
    declare(app, options);
    const CLI::App& uname = declareUname(app);
    const CLI::App& sysctl = declareSysctl(app, options.sysctl);
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& shown) {
        return finished(app.exit(shown)); // --help and --version
    } catch (const CLI::ParseError& error) {
        complain(error.what());
        std::fputs("Run with --help for more information.\n", stderr);
        return badUsage;
    }
    return finished(answer(options, uname, sysctl));
}

} // namespace vantor::sysinfo
