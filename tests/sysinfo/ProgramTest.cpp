// SPDX-License-Identifier: MIT
// The program as users run it. VANTOR_SYSINFO_PROGRAM is the freshly built one.
#include "Output.hpp"
#include "TestTree.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <regex>
#include <string>

namespace {

using nlohmann::json;
using vantor::tests::Outcome;
using vantor::tests::shell;
using vantor::tests::TestTree;

Outcome program(const std::string& arguments) {
    return shell(VANTOR_SYSINFO_PROGRAM " " + arguments);
}

json page(const std::string& arguments = "") {
    return json::parse(program("--no-gpu --json " + arguments).output);
}

/// What follows "NAME:" in the output of lscpu; null where there is no such line.
json lscpu(const std::string& output, const std::string& name) {
    std::smatch found;
    const bool has = std::regex_search(output, found, std::regex("(^|\n)" + name + ": +([^\n]+)"));
    return has ? json(found[2].str()) : json();
}

unsigned long lscpuNumber(const std::string& output, const std::string& name) {
    const json text = lscpu(output, name);
    return text.is_null() ? 0 : std::stoul(text.get<std::string>());
}

TEST(Program, AgreesWithTheSystemsOwnTools) {
    const json processor = page().at("processor");
    EXPECT_EQ(processor.at("threadSlots"), std::stoul(shell("nproc --all").output));
    EXPECT_EQ(page().at("memory").at("pageSize"), std::stoul(shell("getconf PAGE_SIZE").output));
    for (const std::string names : {"-s", "-n", "-r", "-v", "-o", "-snrvmo", "--machine", "--kernel-name"}) {
        EXPECT_EQ(program("uname " + names).output, shell("uname " + names).output) << names;
    }
    EXPECT_EQ(program("uname -o --all").output, shell("uname -snrvmo").output);
    const std::string output = shell("lscpu -B").output;
    EXPECT_EQ(processor.at("threadsInAll"), lscpuNumber(output, "CPU\\(s\\)"));
    EXPECT_EQ(page().at("memory").at("usable"),
              std::stoul(shell("free -b | awk '/^Mem/ {print $2}'").output));
    EXPECT_EQ(page().at("memory").at("swap"), std::stoul(shell("free -b | awk '/^Swap/ {print $2}'").output));
    const unsigned long sockets = lscpuNumber(output, "Socket\\(s\\)");
    if (processor.at("levels").size() == 1 && sockets != 0 &&
        processor.at("threads") == processor.at("threadsInAll")) {
        EXPECT_EQ(processor.at("cores"), lscpuNumber(output, "Core\\(s\\) per socket") * sockets);
        EXPECT_EQ(processor.at("packages"), sockets);
    }
}

TEST(Program, NamesThingsAsTheSystemsOwnToolsDo) {
    const json shown = page();
    const std::string output = shell("lscpu").output;
    EXPECT_EQ(shown.at("machine").at("hypervisor").is_null(), lscpu(output, "Hypervisor vendor").is_null());
    if (shown.at("processor").at("levels").size() == 1) { // else lscpu has a name a line
        EXPECT_EQ(shown.at("processor").at("name"), lscpu(output, "Model name"));
    }
    EXPECT_EQ(shown.at("system").at("name").get<std::string>() + "\n",
              shell("sh -c '. /etc/os-release; echo \"$PRETTY_NAME\"'").output);
    const double before = std::stod(shell("cat /proc/uptime").output);
    const double uptime = page().at("machine").at("uptime");
    EXPECT_GE(uptime, std::floor(before));
    EXPECT_LE(uptime, std::stod(shell("cat /proc/uptime").output));
}

/// lscpu adds up the instances of a cache: on a machine with one kind of core each is the same part.
TEST(Program, AgreesWithLscpuOnCaches) {
    const json processor = page().at("processor");
    const json& levels = processor.at("levels");
    const std::string output = shell("lscpu -B").output;
    if (levels.size() != 1) {
        GTEST_SKIP() << "this machine has several kinds of cores";
    }
    json caches = levels.at(0);
    caches.update(processor);
    const std::array<std::array<const char*, 2>, 4> names{
        {{"l1DataCache", "L1d"}, {"l1InstructionCache", "L1i"}, {"l2Cache", "L2"}, {"l3Cache", "L3"}}};
    for (const auto& [ours, theirs] : names) {
        std::smatch found;
        const std::regex form(std::string(theirs) + " cache: +([0-9]+) \\(([0-9]+) instance");
        if (std::regex_search(output, found, form)) {
            EXPECT_EQ(caches.at(ours), std::stoul(found[1]) / std::stoul(found[2])) << theirs;
        } else {
            EXPECT_TRUE(caches.at(ours).is_null()) << theirs;
        }
    }
}

TEST(Program, EndsWithTheDocumentedCodes) {
    EXPECT_EQ(program("--no-gpu").code, 0);
    EXPECT_EQ(program("--help").code, 0);
    EXPECT_EQ(program("sysctl hw.ncpu").code, 0);
    EXPECT_EQ(program("sysctl no.such.key hw.pagesize").code, 1);
    EXPECT_EQ(program("sysctl --tree no.such").code, 1);
    for (const char* bad : {"sysctl", "--bogus", "uname -z", "uname extra", "sysctl --tree ''",
                            "--replay /nonexistent", "--record", "--record ''", "--replay /etc/passwd",
                            "--replay /proc/self/mem", "--record a --replay b"}) {
        EXPECT_EQ(program(bad).code, 2) << bad;
    }
    EXPECT_EQ(program("--record /proc/nonexistent/file uname").code, 2);
    for (const char* command : {"--help", "--version", "uname", "--no-gpu", "--json sysctl hw.ncpu"}) {
        EXPECT_EQ(program(std::string(command) + " >/dev/full").code, 1) << command;
    }
}

TEST(Program, PrintsKernelValues) {
    EXPECT_EQ(program("sysctl kern.ostype").output, "kern.ostype = " + shell("uname -s").output);
    EXPECT_EQ(program("sysctl no.such.key").output, "vantor-sysinfo: no value: no.such.key\n");
    const json found = json::parse(
        shell("sh -c '" VANTOR_SYSINFO_PROGRAM " --json sysctl x hw.pagesize kern.ostype 2>/dev/null'")
            .output);
    EXPECT_TRUE(found.at("x").is_null());
    EXPECT_EQ(found.at("hw.pagesize"), std::stoul(shell("getconf PAGE_SIZE").output));
    EXPECT_EQ(found.at("kern.ostype"), "Linux");
    const json tree = json::parse(program("--json sysctl --tree kernel.random").output);
    EXPECT_TRUE(tree.contains("kernel.random.boot_id"));
    EXPECT_EQ(json::parse(program("--json sysctl --tree hw").output).at("hw.machine").get<std::string>() +
                  "\n",
              shell("uname -m").output);
    EXPECT_EQ(program("uname -msm").output,
              shell("echo $(uname -m) $(uname -s)").output); // the caller's order, each letter once
    EXPECT_NE(program("--verbose uname -s").output.find("[CPUDetect] uname data is: "), std::string::npos);
}

TEST(Program, ShowsARecordedMachineAgain) {
    const TestTree tree;
    const std::string file = (tree.root() / "recording").string();
    const Outcome live = program("--no-gpu --record " + file);
    EXPECT_EQ(program("--replay " + file).output, live.output);
    EXPECT_EQ(program("uname -p --replay " + file).output, program("uname -p").output);
    EXPECT_EQ(program("--replay " + file + " sysctl kernel.pid_max").code, 1); // this machine's is not asked
}

const char* const phone = R"({"vantor-sysinfo": 1, "cpuid": [],
    "gpu": {"name": "A15 GPU", "vram": 3221225472, "hasUnifiedMemory": true},
    "records": {"hw.machine": "aarch64", "hw.memsize": "5905580032", "hw.nperflevels": "2",
    "hw.physicalcpu": "6", "hw.logicalcpu": "8", "hw.packages": "1", "hw.perflevel0.physicalcpu": "2", "hw.perflevel1.physicalcpu": "4",
    "hw.perflevel0.l1dcachesize": "131072", "hw.perflevel1.l2cachesize": "4194304",
    "hw.cpufrequency": "3240000000", "vm.swap_total": "0", "kern.uptime": "93784",
    "machdep.cpu.brand_string": "Cortex-X1 + Cortex-A55", "kern.bootargs": "secret=1",
    "kern.version": "#1 SMP PREEMPT Thu Jan  1 00:00:00 UTC 1970", "kern.hostname": "tel\u001b[31m"}})";

TEST(Program, ShowsAMachineAsAPage) {
    const TestTree tree;
    const std::string other = tree.write("phone", phone).string();
    EXPECT_EQ(program("--replay " + other).output,
              "Machine    Name             tel\uFFFD[31m\n"
              "           Architecture     aarch64, 64 bits\n"
              "           Up for           1 day, 2 hours\n"
              "\n"
              "System     Kernel build     #1 SMP PREEMPT Thu Jan  1 00:00:00 UTC 1970\n"
              "\n"
              "Processor  Name             Cortex-X1 + Cortex-A55\n"
              "           Cores            6 (8 threads, 1 socket)\n"
              "           Top frequency    3.24 GHz\n"
              "\n"
              "                            Performance   Efficiency\n"
              "           Cores            2             4\n"
              "           L1 data          2 x 128 KB    -\n"
              "           L2               -             4 MB each\n"
              "\n"
              "Memory     Usable           5.5 GB\n"
              "           Swap             none\n"
              "\n"
              "Graphics   Name             A15 GPU\n"
              "           Memory           3 GB (Unified)\n");
    const json shown = page("--replay " + other);
    EXPECT_EQ(shown.at("processor").at("levels").at(1).at("cores"), 4);
    EXPECT_TRUE(shown.at("processor").at("family").is_null());
}

TEST(Program, UsesATerminalsWidthAndBoldHeadings) {
    const TestTree tree;
    const std::string replay = "--replay " + tree.write("phone", phone).string();
    const auto onTerminal = [&](const std::string& setting) {
        return shell("script -qec 'stty cols 50; " + setting + " " VANTOR_SYSINFO_PROGRAM " " + replay +
                     "' /dev/null")
            .output;
    };
    const std::string shown = onTerminal("TERM=xterm NO_COLOR=");
    EXPECT_NE(shown.find("\033[1mMachine\033[0m    Name "), std::string::npos);
    EXPECT_NE(shown.find(" Kernel build     #1 SMP PREEMPT Thu Jan\r\n"
                         "                            1 00:00:00 UTC 1970\r\n"),
              std::string::npos)
        << shown;
    EXPECT_EQ(onTerminal("TERM=xterm NO_COLOR=1").find('\033'), std::string::npos);
    EXPECT_EQ(onTerminal("TERM=dumb").find('\033'), std::string::npos);
}

} // namespace
