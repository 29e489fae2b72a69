// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"
#include "platform/linux/ReleasableScan.hpp"
#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/FolderWalk.hpp"
#include "platform/linux/removal/KeptReleasable.hpp"
#include "platform/linux/user/KeptSuite.hpp"
#include "platform/linux/user/LinuxViewer.hpp"
#include "platform/linux/user/SuiteReader.hpp"
#include "platform/linux/user/UserDirs.hpp"
#include "platform/posix/Environment.hpp"
#include "platform/posix/EventDescriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <limits>
#include <optional>
#include <thread>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using namespace platform::linux;
using platform::posix::UserFolders;

TEST(Suite, IsReadWholeAndNotMarkedAsRead) {
    const TestTree tree;
    LinuxViewer viewer({.folders = homeBelow(tree.root()), .useLocale = false});
    const std::string bytes("bplist00\0\xFF", 10);
    const std::string path = tree.write(storeFile, bytes).string();
    struct stat before {};
    ::stat(path.c_str(), &before);
    const platform::SuiteFile file = *viewer.readSuite("group.vantor");
    EXPECT_TRUE(file.exists && file.usable);
    EXPECT_EQ(file.content, bytes);
    EXPECT_EQ(file.path, path);
    struct stat after {};
    ::stat(path.c_str(), &after);
    EXPECT_EQ(before.st_atim.tv_nsec, after.st_atim.tv_nsec);
}

TEST(Suite, IsReadAgainOnlyWhereItMayHaveChanged) {
    const TestTree tree;
    const fs::path path = tree.write("store", "one");
    KeptSuite suite(path.string());
    const auto readAfter = [&](std::chrono::nanoseconds age) {
        struct stat about {};
        ::stat(path.c_str(), &about);
        return suite.read(std::chrono::seconds(about.st_ctim.tv_sec) +
                          std::chrono::nanoseconds(about.st_ctim.tv_nsec) + age);
    };
    using namespace std::chrono_literals;
    EXPECT_NE(readAfter(1ms), readAfter(1ms)); // another writing might have the same time
    const auto kept = readAfter(10s);
    EXPECT_EQ(readAfter(10s), kept);
    std::ofstream(path) << "two"; // in place, of the same size, and dated back
    fs::last_write_time(path, fs::file_time_type());
    EXPECT_EQ(readAfter(10s)->content, "two");
    fs::rename(tree.write("next", "new"), path);
    EXPECT_EQ(readAfter(10s)->content, "new");
    fs::remove(path);
    EXPECT_FALSE(readAfter(10s)->exists);
    tree.write("store", std::string(100'000, 'x')); // too large to be kept
    EXPECT_NE(readAfter(10s), readAfter(10s));
}

TEST(Suite, IsFoundWhereTheEnvironmentSays) {
    UserFolders folders;
    folders.config = "/home/u/.config";
    EXPECT_EQ(suitePath(folders, "group.vantor"), "/home/u/.config/vantor/group.vantor.plist");
    EXPECT_EQ(suitePath(folders, "../x"), "");
    folders.suiteFile = "prefs.plist";
    EXPECT_EQ(suitePath(folders, "group.vantor"), "prefs.plist");
    EXPECT_EQ(suitePath({}, "group.vantor"), "");
}

TEST(UserDirs, TakeOnlyWhatTheFormatAllows) {
    const auto documents = [](std::string_view text) {
        return parseUserDir(text, "XDG_DOCUMENTS_DIR", "/home/u").value_or("-");
    };
    EXPECT_EQ(documents("# a comment\nXDG_DESKTOP_DIR=\"$HOME/D\"\n XDG_DOCUMENTS_DIR = \"$HOME/Papers/\"\n"),
              "/home/u/Papers");
    EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/data/a\\\"b\""), "/data/a\"b");
    EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"$HOME\"\nXDG_DOCUMENTS_DIR=\"/x\"\n"), "/x");
    for (const char* const bad : {"XDG_DOCUMENTS_DIR=$HOME/x\n", "XDG_DOCUMENTS_DIR=\"relative\"\n",
                                  "XDG_DOCUMENTS_DIR=\"$HOMELESS/x\"\n", "XDG_DOCUMENTS_DIR=\"/open\n",
                                  "XDG_DOCUMENTS_DIR2=\"/x\"\n", "XDG_DOCUMENTS_DIR", ""}) {
        EXPECT_EQ(documents(bad), "-") << bad;
    }
    const TestTree tree;
    tree.write("home/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    TreeMachine machine(tree.root());
    EXPECT_EQ(*machine->documentDirectories(), std::vector{(tree.root() / "home/Dokumente").string()});
}

TEST(UserFolders, AreAbsoluteOrNotThere) {
    const std::string before = platform::posix::environmentText("HOME");
    for (const char* const home : {"", ".", "relative/home", "~"}) {
        ::setenv("HOME", home, 1);
        ::setenv("XDG_STATE_HOME", home, 1);
        const auto folders = platform::posix::UserFolders::fromEnvironment();
        for (const std::string& folder :
             {folders.home, folders.config, folders.cache, folders.data, folders.state}) {
            EXPECT_TRUE(folder.empty() || folder.starts_with('/')) << home << ": " << folder;
        }
        EXPECT_EQ(folders.state, folders.home.empty() ? "" : folders.home + "/.local/state");
    }
    ::unsetenv("XDG_STATE_HOME");
    ::unsetenv("XDG_CONFIG_HOME");
    ::setenv("HOME", "/\xff h", 1); // bytes, in no encoding
    EXPECT_EQ(platform::posix::UserFolders::fromEnvironment().config, "/\xff h/.config");
    ::setenv("HOME", before.c_str(), 1);
}

TEST(Releasable, CountsWhatDeletingGivesBackOnOneFileSystemAndFollowsNoLink) {
    const TestTree tree;
    const std::string block(8192, 'x');
    const fs::path cache = tree.root() / "cache";
    tree.write("cache/a", block);
    tree.write("cache/deep/er/b", block);
    const std::string big(1 << 20, 'x');
    tree.write("elsewhere/big", big);
    fs::create_hard_link(cache / "a", cache / "deep/a-again");
    fs::create_directory_symlink(tree.root() / "elsewhere", cache / "link");
    const auto walked = [](const fs::path& folder, const fs::path& fileSystem, int entries = 100) {
        const platform::posix::Descriptor place(::open(fileSystem.c_str(), O_RDONLY));
        FolderWalk walk(*fileSystemOf(place.number()), ::getuid(), [&entries] { return --entries >= 0; });
        walk.add(folder.string());
        return walk.bytes();
    };
    const std::uint64_t both = walked(cache, tree.root());
    EXPECT_GE(both, 2 * block.size());
    EXPECT_LT(both, 8 * block.size());
    // What has a name elsewhere too keeps its blocks.
    fs::create_hard_link(cache / "a", tree.root() / "elsewhere/a-third");
    EXPECT_EQ(walked(cache, tree.root()), both - block.size());
    fs::create_hard_link(tree.root() / "elsewhere/big", cache / "big");
    EXPECT_LT(walked(cache, tree.root()), big.size());
    EXPECT_EQ(walked(cache / "link", tree.root()), 0U);
    EXPECT_EQ(walked(cache, "/proc"), 0U);
    EXPECT_EQ(walked(cache, tree.root(), 0), 0U);
}

TEST(Releasable, IsKeptBetweenRunsAndCountsAsAvailableForImportantUse) {
    const TestTree tree(TestTree::inMemory());
    tree.write("home/.cache/browser/page", std::string(1 << 16, 'x'));
    tree.write("home/.local/share/Trash/files/old", std::string(1 << 16, 'x'));
    tree.write("proc/self/mountinfo", localRoot);
    TreeMachine machine(tree.root());
    const std::string documents = machine->documentDirectories()->at(0);
    const auto capacities = [&] { // of the next report
        machine.pass(std::chrono::seconds(2));
        return machine->volumeCapacities(documents).value();
    };
    const auto releasable = [&] {
        const platform::VolumeCapacities now = capacities();
        return *now.availableForImportantUsage - *now.available;
    };
    EXPECT_EQ(releasable(), 0);
    ScanPace pace;
    pace.firstDelay = std::chrono::milliseconds(0);
    machine->startReleasableScan(pace);
    std::int64_t found = 0;
    while ((found = releasable()) == 0) { // the scan's own thread; ctest's limit ends a scan that never ends
        std::this_thread::yield();
    }
    EXPECT_GE(found, 2 << 16);
    const std::string kept = (tree.root() / "home/.cache/vantor/releasable").string();
    std::optional<KeptReleasable> result;
    while (!(result = loadKeptReleasable(kept))) {
        std::this_thread::yield();
    }
    EXPECT_EQ(result->result.bytes, found);
    // Another program of ours released some: the next report knows.
    result->result = {4096, std::numeric_limits<std::int64_t>::max()};
    saveKeptReleasable(kept, *result);
    EXPECT_EQ(releasable(), 4096);
    // All of it is available by now, whoever released it, and writing to that room does not bring it back.
    constexpr std::int64_t part = 1 << 21, much = part << 3;
    tree.write("ballast", std::string(much, 'x'));
    result->result = {much, *capacities().available};
    saveKeptReleasable(kept, *result);
    EXPECT_NEAR(static_cast<double>(releasable()), much, part);
    fs::remove(tree.root() / "ballast");
    EXPECT_LT(releasable(), part);
    tree.write("ballast", std::string(much, 'x'));
    EXPECT_LT(releasable(), part);
    EXPECT_EQ((Releasable{100, 50}.left(80)), 70);
    EXPECT_EQ((Releasable{100, 50}.left(20)), 100);
}

TEST(Releasable, KeptTextIsReadBackOnlyWhole) {
    const KeptReleasable kept{18446744073709551615U, {12345, 67890}, 1700000000};
    const std::string text = formatKeptReleasable(kept);
    EXPECT_EQ(parseKeptReleasable(text), kept);
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(parseKeptReleasable(std::string_view(text).substr(0, length)));
    }
    EXPECT_FALSE(parseKeptReleasable(text + "x"));
    EXPECT_FALSE(parseKeptReleasable("vantor-releasable 2 1 -5 7 9\n"));
}

TEST(EventDescriptor, IsReadableOnceHoweverOftenItWasWoken) {
    const platform::posix::EventDescriptor event;
    EXPECT_FALSE(event.drain());
    std::thread([&event] { event.wake(); }).join();
    event.wake();
    EXPECT_TRUE(event.drain());
    EXPECT_FALSE(event.drain());
}

} // namespace
} // namespace vantor::tests
