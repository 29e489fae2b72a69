// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/FileSystemFetch.hpp"

#include "Output.hpp"
#include "TestTree.hpp"
#include "sysinfo/SystemValues/CPUID.hpp"
#include "sysinfo/SystemValues/Printer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantor::SystemValues {
namespace {

using tests::logOf;
using tests::shell;
using tests::TestTree;

static_assert(FileSystemFetchInstance<BrigeFetcher>);

std::string base(const TestTree& tree) {
    return tree.root().string() + "/";
}

TEST(FileSystemFetch, ReadsValuesBelowItsFolder) {
    const TestTree tree;
    tree.write("kernel/hostname", "box\n");
    tree.write("answer", "42\n");
    tree.write("two", "x\n\n");
    tree.write("flag", "1");
    tree.write("seven", "7\n");
    tree.write("bytes", "\xFF\n");
    const BrigeFetcher fetcher(base(tree));
    EXPECT_EQ(fetcher.getString("kernel.hostname"), "box");
    EXPECT_EQ(fetcher.getInteger<std::uint8_t>("answer"), 42);
    EXPECT_EQ(fetcher.getString("two"), "x\n");
    EXPECT_EQ(fetcher.getInteger<int>("two"), std::nullopt);
    EXPECT_EQ(fetcher.getBool("flag"), true);
    EXPECT_EQ(fetcher.getBool("seven"), std::nullopt);
    EXPECT_EQ(fetcher.getString("bytes"), std::nullopt);
    EXPECT_EQ(fetcher.getData("bytes"), (PackagesBase::Data{std::byte{0xFF}, std::byte{'\n'}}));
    EXPECT_EQ(fetcher.getData("none"), std::nullopt);
}

TEST(FileSystemFetch, ListsFolders) {
    const TestTree tree;
    tree.write("net/all/x", "1\n");
    tree.write("net/eth0.5/x", "1\n");
    tree.write("net/value", "on\n");
    tree.write("net/odd.name", "off\n");
    tree.write("net/bad", "\xFF");
    std::filesystem::create_symlink("nowhere", tree.root() / "net/broken");
    const BrigeFetcher fetcher(base(tree));
    EXPECT_EQ(fetcher.listDirectoryEntries("net"), (FileTree::Names{"all", "eth0.5"}));
    EXPECT_EQ(fetcher.listFileEntries("net"), (FileTree::Names{"bad", "odd.name", "value"}));
    const auto values = fetcher.listFileEntriesWithValues("net");
    ASSERT_TRUE(values);
    EXPECT_EQ(values->size(), 2U);
    EXPECT_EQ(std::any_cast<std::string>(values->at("odd.name")), "off");

    EXPECT_EQ(logOf([&] { EXPECT_EQ(fetcher.listEntries("net.value"), std::nullopt); }),
              "[SystemValues] Listing entries at path: " + base(tree) +
                  "net/value\n[SystemValues] Specified entry path does not exist: " + base(tree) +
                  "net/value\n");
    EXPECT_THAT(logOf([&] { (void)fetcher.listEntries("net.all"); }),
                testing::EndsWith("[SystemValues] Got directory contents: [\"x\": false]\n"));
}

/// The static twin, on the running system.
struct KernelParameters : FileSystemFetchMixin<KernelParameters> {
    static std::string subfolder() { return "/proc/sys/"; }
};
static_assert(FileSystemFetch<KernelParameters>);

TEST(FileSystemFetch, AgreesWithTheSystemsOwnTool) {
    if (shell("sysctl -V").code != 0) {
        GTEST_SKIP() << "the system has no sysctl";
    }
    for (const std::string key : {"kernel.ostype", "kernel.hostname", "kernel.osrelease", "kernel.version",
                                  "kernel.pid_max", "vm.swappiness", "fs.file-max"}) {
        const std::string own = shell("sysctl -n " + key).output;
        EXPECT_EQ(BrigeFetcher("/proc/sys/").getString(key).value_or("") + "\n", own) << key;
        EXPECT_EQ(KernelParameters::getString(key).value_or("") + "\n", own) << key;
    }
}

TEST(Printer, MarksErrorLinesAndLeavesThePrefixOut) {
    EXPECT_EQ(logOf([] { Printer::print("text"); }), "[SystemValues] text\n");
    EXPECT_EQ(logOf([] { Printer::errorPrint("text"); }), " ERROR:  text\n");
    EXPECT_EQ(logOf([] { GeneralPrinter::errorPrint("text"); }), "  text\n");
    EXPECT_EQ(logOf([] {
                  Printer::print(std::map<std::string, std::vector<int>>{{"a", {1, 2}}});
              }),
              "[SystemValues] [\"a\": [1, 2]]\n");
}

TEST(Printer, DescribesAnyValue) {
    enum class Speed : std::uint8_t { slow = 65 };
    const auto printed = [](const auto& item) {
        const std::string line = logOf([&] { Printer::print(item); });
        return line.substr(15, line.size() - 16);
    };
    EXPECT_EQ(printed(std::optional<bool>()), "nil");
    EXPECT_EQ(printed(std::filesystem::path("/a/b c")), "/a/b c"); // a range of paths
    EXPECT_EQ(printed(Speed::slow), "65");
    EXPECT_EQ(printed(FileTree::Values{{"a", std::string("on")}, {"b", 2}, {"c", std::any()}}),
              R"(["a": "on", "b": 2, "c": nil])");
    EXPECT_EQ(printed(std::any(std::string("text"))), "text");
    EXPECT_EQ(printed(std::any(Speed::slow)), "(a value of another type)");
    EXPECT_EQ(printed(PackagesBase::Data{std::byte{255}}), "[255]");
    EXPECT_EQ(printed(std::vector<CPUID::Registers>{{10, 0, 0, 0, 4, 1}}),
              "[Registers(leaf: 0x4, sub-leaf: 0x1, eax: 0xa, ebx: 0, ecx: 0, edx: 0)]");
}

} // namespace
} // namespace vantor::SystemValues
