// SPDX-License-Identifier: MIT
// The program as users run it. VANTOR_SYSINFO_PROGRAM is the freshly built one.
#include "Output.hpp"
#include "TestTree.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
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

/// The number after "NAME:" in the output of lscpu; 0 where there is none.
unsigned long lscpu(const std::string& output, const std::string& name) {
    std::smatch found;
    const bool has = std::regex_search(output, found, std::regex("(^|\n)" + name + ": +([0-9]+)"));
    return has ? std::stoul(found[2]) : 0;
}

TEST(Program, AgreesWithTheSystemsOwnTools) {
    const json processor = page().at("processor");
    EXPECT_EQ(processor.at("threadSlots"), std::stoul(shell("nproc --all").output));
    EXPECT_EQ(page().at("memory").at("pageSize"), std::stoul(shell("getconf PAGE_SIZE").output));
    for (const std::string letter : {"-s", "-n", "-r", "-v", "-m"}) {
        EXPECT_EQ(program("uname " + letter).output, shell("uname " + letter).output) << letter;
    }
    const std::string output = shell("lscpu -B").output;
    EXPECT_EQ(processor.at("threadsInAll"), lscpu(output, "CPU\\(s\\)"));
    const unsigned long sockets = lscpu(output, "Socket\\(s\\)");
    if (processor.at("levels").size() == 1 && sockets != 0 &&
        processor.at("threads") == processor.at("threadsInAll")) {
        EXPECT_EQ(processor.at("cores"), lscpu(output, "Core\\(s\\) per socket") * sockets);
    }
}

/// lscpu adds up the instances of a cache: on a machine with one kind of core each is the same part.
TEST(Program, AgreesWithLscpuOnCaches) {
    const json levels = page().at("processor").at("levels");
    const std::string output = shell("lscpu -B").output;
    if (levels.size() != 1) {
        GTEST_SKIP() << "this machine has several kinds of cores";
    }
    const std::array<std::array<const char*, 2>, 3> names{
        {{"l1DataCache", "L1d"}, {"l1InstructionCache", "L1i"}, {"l2Cache", "L2"}}};
    for (const auto& [ours, theirs] : names) {
        std::smatch found;
        const std::regex form(std::string(theirs) + " cache: +([0-9]+) \\(([0-9]+) instance");
        if (std::regex_search(output, found, form)) {
            EXPECT_EQ(levels.at(0).at(ours), std::stoul(found[1]) / std::stoul(found[2])) << theirs;
        } else {
            EXPECT_TRUE(levels.at(0).at(ours).is_null()) << theirs;
        }
    }
}

TEST(Program, EndsWithTheDocumentedCodes) {
    EXPECT_EQ(program("--no-gpu").code, 0);
    EXPECT_EQ(program("--help").code, 0);
    EXPECT_EQ(program("sysctl hw.ncpu").code, 0);
    EXPECT_EQ(program("sysctl no.such.key hw.pagesize").code, 1);
    EXPECT_EQ(program("sysctl --tree no.such").code, 1);
    for (const char* bad :
         {"sysctl", "--bogus", "uname -z", "uname extra", "sysctl --tree ''", "--replay /nonexistent",
          "--record", "--replay /etc/passwd", "--record a --replay b"}) {
        EXPECT_EQ(program(bad).code, 2) << bad;
    }
    EXPECT_EQ(program("--record /nonexistent/file uname").code, 2);
}

TEST(Program, PrintsKernelValues) {
    EXPECT_EQ(program("sysctl kern.ostype").output, "kern.ostype = " + shell("uname -s").output);
    EXPECT_EQ(program("sysctl no.such.key").output, "vantor-sysinfo: no value: no.such.key\n");
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

    const std::string other = tree.write("phone", R"({"vantor-sysinfo": 1, "cpuid": [],
        "gpu": {"name": "A15 GPU", "vram": 3221225472, "hasUnifiedMemory": true},
        "records": {"hw.machine": "aarch64", "hw.memsize": "5905580032", "hw.nperflevels": "2",
        "hw.physicalcpu": "6", "hw.perflevel0.physicalcpu": "2", "hw.perflevel1.physicalcpu": "4",
        "hw.perflevel0.l1dcachesize": "131072", "kern.hostname": "tel\u001b[31m"}})")
                                  .string();
    EXPECT_EQ(program("--replay " + other).output, "Machine\n"
                                                   "  Name              tel\uFFFD[31m\n"
                                                   "  Architecture      aarch64\n"
                                                   "\n"
                                                   "Processor\n"
                                                   "  Cores             6\n"
                                                   "  Word size         64 bits\n"
                                                   "\n"
                                                   "Cores and caches    Performance   Efficiency\n"
                                                   "  Cores             2             4\n"
                                                   "  L1 data           128 KB        -\n"
                                                   "\n"
                                                   "Memory\n"
                                                   "  Installed         5.5 GB\n"
                                                   "\n"
                                                   "Graphics\n"
                                                   "  Name              A15 GPU\n"
                                                   "  Memory            3 GB (Unified)\n");
    const json shown = page("--replay " + other);
    EXPECT_EQ(shown.at("processor").at("levels").at(1).at("cores"), 4);
    EXPECT_TRUE(shown.at("processor").at("name").is_null());
    for (const char* broken :
         {"", "[]", "{\"vantor-sysinfo\": 2}", "{\"vantor-sysinfo\": 1, \"records\": 5}"}) {
        EXPECT_EQ(program("--replay " + tree.write("broken", broken).string()).code, 2) << broken;
    }
}

} // namespace
