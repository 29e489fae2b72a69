// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"
#include "platform/linux/KeptReleasable.hpp"
#include "platform/linux/ReleasableScan.hpp"
#include "platform/linux/kernel/FolderWalk.hpp"
#include "platform/linux/user/LinuxViewer.hpp"
#include "platform/linux/user/SuiteReader.hpp"
#include "platform/linux/user/UserDirs.hpp"
#include "platform/posix/EventDescriptor.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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
    const platform::SuiteFile file = viewer.readSuite("group.vantor");
    EXPECT_TRUE(file.exists && file.usable);
    EXPECT_EQ(file.content, bytes);
    EXPECT_EQ(file.path, path);
    struct stat after {};
    ::stat(path.c_str(), &after);
    EXPECT_EQ(before.st_atim.tv_nsec, after.st_atim.tv_nsec);
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

TEST(Releasable, CountsBlocksOnceOnOneFileSystemAndFollowsNoLink) {
    const TestTree tree;
    const std::string block(8192, 'x');
    tree.write("cache/a", block);
    tree.write("cache/deep/er/b", block);
    tree.write("elsewhere/big", std::string(1 << 20, 'x'));
    fs::create_hard_link(tree.root() / "cache/a", tree.root() / "cache/deep/a-again");
    fs::create_directory_symlink(tree.root() / "elsewhere", tree.root() / "cache/link");
    struct stat about {};
    ::stat(tree.root().c_str(), &about);
    const auto walked = [&](const fs::path& folder, dev_t fileSystem, int entries) {
        FolderWalk walk(fileSystem, ::getuid(), [&entries] { return --entries >= 0; });
        walk.add(folder.string());
        return walk.bytes();
    };
    EXPECT_GE(walked(tree.root() / "cache", about.st_dev, 100), 2 * block.size());
    EXPECT_LT(walked(tree.root() / "cache", about.st_dev, 100), 8 * block.size());
    EXPECT_EQ(walked(tree.root() / "cache/link", about.st_dev, 100), 0U);
    EXPECT_EQ(walked(tree.root() / "cache", about.st_dev + 1, 100), 0U);
    walked(tree.root() / "cache", about.st_dev, 2);
}

TEST(Releasable, IsKeptBetweenRunsAndCountsAsAvailableForImportantUse) {
    const TestTree tree;
    tree.write("home/.cache/browser/page", std::string(1 << 16, 'x'));
    tree.write("home/.local/share/Trash/files/old", std::string(1 << 16, 'x'));
    const UserFolders folders{.home = tree.root() / "home",
                              .cache = tree.root() / "home/.cache",
                              .data = tree.root() / "home/.local/share"};
    if (releasableBytes(folders, folders.home, [] { return true; }) == 0) {
        GTEST_SKIP() << "the temporary folder is on no local file system";
    }
    TreeMachine machine(tree.root());
    const std::string documents = machine->documentDirectories()->at(0);
    const platform::VolumeCapacities before = machine->volumeCapacities(documents).value();
    EXPECT_EQ(before.available, before.availableForImportantUsage);
    ScanPace pace;
    pace.firstDelay = std::chrono::milliseconds(0);
    machine->startReleasableScan(pace);
    std::int64_t releasable = 0;
    while (releasable == 0) { // the scan's own thread; ctest's limit ends a scan that never ends
        const platform::VolumeCapacities now = machine->volumeCapacities(documents).value();
        releasable = *now.availableForImportantUsage - *now.available;
        std::this_thread::yield();
    }
    EXPECT_GE(releasable, 2 << 16);
    const std::string kept = (tree.root() / "home/.cache/vantor/releasable").string();
    while (!loadKeptReleasable(kept)) {
        std::this_thread::yield();
    }
    EXPECT_EQ(loadKeptReleasable(kept)->bytes, static_cast<std::uint64_t>(releasable));
}

TEST(Releasable, KeptTextIsReadBackOnlyWhole) {
    const KeptReleasable kept{18446744073709551615U, 12345, 1700000000};
    const std::string text = formatKeptReleasable(kept);
    EXPECT_EQ(parseKeptReleasable(text), kept);
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(parseKeptReleasable(std::string_view(text).substr(0, length)));
    }
    EXPECT_FALSE(parseKeptReleasable(text + "x"));
    EXPECT_FALSE(parseKeptReleasable("vantor-releasable 1 1 -5 7\n"));
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
