// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

// Every file that a refresh reads, broken in every way that a kernel, a container or a truncated copy may
// break it. Whatever happens: no crash, no figure beyond the machine's own, and the other sections do not
// notice.
namespace vantor::tests {
namespace {

namespace fs = std::filesystem;

struct Mutation {
    std::string name;
    std::optional<std::string> text; ///< absent: the file is gone
    bool leavesNothing = false;      ///< not one line can be understood
};

std::vector<std::size_t> lineStarts(const std::string& text) {
    std::vector<std::size_t> starts{0};
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '\n') {
            starts.push_back(i + 1);
        }
    }
    return starts;
}

/// Every number replaced by the same text.
std::string withNumbers(const std::string& text, const std::string& number) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        const bool begins = isDigit(text[i]) && (i == 0 || text[i - 1] == ' ' || text[i - 1] == '\n');
        if (begins) {
            while (i + 1 < text.size() && isDigit(text[i + 1])) {
                ++i;
            }
        }
        result += begins ? number : std::string(1, text[i]);
    }
    return result;
}

std::vector<Mutation> mutationsOf(const std::string& text) {
    std::vector<Mutation> all{{"missing", std::nullopt, true},
                              {"empty", "", true},
                              {"no final newline", text.substr(0, text.size() - 1)},
                              {"NULs", std::string(4096, '\0'), true},
                              {"1 MB line first", std::string(1 << 20, 'x') + '\n' + text},
                              {"1 MB of digits", std::string(1 << 20, '9'), true},
                              {"40-digit numbers", withNumbers(text, std::string(40, '7')), true},
                              {"negative numbers", withNumbers(text, "-17"), true},
                              {"largest numbers", withNumbers(text, "18446744073709551615")},
                              {"zeros", withNumbers(text, "0")},
                              {"carriage returns", withNumbers(text, "1\r")}};
    const std::vector<std::size_t> starts = lineStarts(text);
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const std::size_t end = i + 1 < starts.size() ? starts[i + 1] : text.size();
        all.push_back({"without line " + std::to_string(i), text.substr(0, starts[i]) + text.substr(end)});
        all.push_back({"cut in line " + std::to_string(i), text.substr(0, (starts[i] + end) / 2)});
    }
    return all;
}

/// The sections' figures in one text, to be compared.
struct Figures {
    std::string memory, ticks, network, documents;
    bool operator==(const Figures&) const = default;
};

Figures read(TreeMachine& machine) {
    Figures figures;
    platform::vm_statistics64 record{};
    if (machine->hostVirtualMemory(record) == platform::KERN_SUCCESS) {
        const std::uint64_t pages = machine->physicalMemory() / 4096;
        for (const std::uint32_t count :
             {record.free_count, record.active_count, record.inactive_count, record.wire_count,
              record.purgeable_count, record.compressor_page_count}) {
            EXPECT_LE(count, pages);
            figures.memory += std::to_string(count) + ' ';
        }
        EXPECT_LE(std::uint64_t{record.free_count} + record.inactive_count, pages);
        EXPECT_LE(record.purgeable_count, record.free_count);
    }
    platform::host_cpu_load_info ticks{};
    EXPECT_EQ(machine->hostCpuLoad(ticks), platform::KERN_SUCCESS);
    figures.ticks = std::to_string(ticks.user) + ' ' + std::to_string(ticks.idle);
    machine.pass(std::chrono::milliseconds(100)); // ticks that stand still any longer are a failure
    platform::host_cpu_load_info later{};
    EXPECT_EQ(machine->hostCpuLoad(later), platform::KERN_SUCCESS);
    EXPECT_TRUE(later.user >= ticks.user && later.system >= ticks.system && later.nice >= ticks.nice &&
                later.idle > ticks.idle);
    for (const auto& [name, counters] : machine.countedLinks()) {
        figures.network += name + ' ' + std::to_string(counters.first) + ' ';
    }
    const std::string home = machine->documentDirectories()->at(0);
    figures.documents = home.substr(home.rfind("/home"));
    return figures;
}

struct Case {
    const char* tree;
    const char* file;
    std::string Figures::*section; ///< the only one that may change
    const char* source;
    const char* text = nullptr;    ///< given to a tree that has no such file
    bool withoutAvailable = false; ///< an old kernel's, on which that figure is made up from others
    friend void PrintTo(const Case& hostile, std::ostream* out) {
        *out << hostile.tree << ' ' << hostile.file;
    }
};

class HostileText : public testing::TestWithParam<Case> {};

TEST_P(HostileText, HarmsOnlyItsOwnSection) {
    const Case& hostile = GetParam();
    const fs::path original = fs::path(VANTOR_TEST_DATA) / "trees" / hostile.tree;
    const TestTree copy;
    fs::copy(original, copy.root(), fs::copy_options::recursive);
    if (!fs::exists(copy.root() / "proc/stat")) {
        copy.write("proc/stat", "cpu  100 0 50 900 0 0 0 0 0 0\ncpu0 100 0 50 900 0 0 0 0 0 0\n");
    }
    if (hostile.text != nullptr) {
        copy.write(hostile.file, hostile.text);
    }
    if (hostile.withoutAvailable) {
        const std::string memory = fileContent(copy.root() / "proc/meminfo");
        const std::size_t line = memory.find("MemAvailable");
        copy.write("proc/meminfo", memory.substr(0, line) + memory.substr(memory.find('\n', line) + 1));
    }
    const std::string text = fileContent(copy.root() / hostile.file);
    ASSERT_FALSE(text.empty());
    TreeMachine healthy(copy.root());
    const Figures expected = read(healthy);
    for (const Mutation& mutation : mutationsOf(text)) {
        SCOPED_TRACE(mutation.name);
        if (mutation.text) {
            copy.write(hostile.file, *mutation.text);
        } else {
            fs::remove(copy.root() / hostile.file);
        }
        TreeMachine machine(copy.root());
        Figures figures = read(machine);
        const std::string failed = machine.failedSources();
        EXPECT_TRUE((failed.empty() && !mutation.leavesNothing) || failed == hostile.source) << failed;
        figures.*hostile.section = expected.*hostile.section;
        EXPECT_EQ(figures, expected);
        // A good file again: everything as before, and no failure any more.
        copy.write(hostile.file, text);
        read(machine);
        EXPECT_EQ(machine.failedSources(), "");
    }
    // The file breaks under a running machine: the other figures stay, the last memory record holds.
    TreeMachine running(copy.root());
    read(running);
    fs::remove(copy.root() / hostile.file);
    EXPECT_FALSE(read(running).memory.empty());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, HostileText, testing::Values(
    Case{"laptop", "proc/meminfo", &Figures::memory, "memory "},
    Case{"laptop", "sys/block/zram0/mm_stat", &Figures::memory, ""},
    Case{"server", "proc/spl/kstat/zfs/arcstats", &Figures::memory, ""},
    Case{"laptop", "proc/stat", &Figures::ticks, "processor "},
    Case{"laptop", "proc/net/dev", &Figures::network, "network "},
    Case{"laptop", "sys/class/net/wlp0s20f3/type", &Figures::network, ""},
    Case{"laptop", "sys/class/net/wlp0s20f3/uevent", &Figures::network, ""},
    Case{"phone", "sys/class/net/rmnet_ipa0/type", &Figures::network, ""},
    Case{"container", "proc/net/route", &Figures::network, ""},
    Case{"container", "proc/net/ipv6_route", &Figures::network, "",
         "00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
         "00000000000000000000000000000000 00000400 00000001 00000000 00000001 eth0\n"},
    Case{"laptop", "proc/sys/vm/min_free_kbytes", &Figures::memory, "", "67584\n", true},
    Case{"laptop", "home/.config/user-dirs.dirs", &Figures::documents, "",
         "# by hand\nXDG_DOCUMENTS_DIR=\"$HOME/Documents\"\nXDG_MUSIC_DIR=\"$HOME/8\"\n"}));
// clang-format on

TEST(HostileText, AFolderInAFilesPlaceIsNamed) {
    const TestTree tree;
    tree.write("proc/meminfo/x", "");
    TreeMachine machine(tree.root());
    platform::vm_statistics64 record{};
    EXPECT_NE(machine->hostVirtualMemory(record), platform::KERN_SUCCESS);
    const std::string reason = (tree.root() / "proc/meminfo").string() + ": Is a directory";
    EXPECT_EQ(machine->failures(), std::vector({platform::SourceFailure{platform::Source::memory, reason}}));
}

} // namespace
} // namespace vantor::tests
