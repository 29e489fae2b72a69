// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/MountTable.hpp"

#include "TestTree.hpp"
#include "platform/linux/user/LinuxViewer.hpp"

#include <gtest/gtest.h>

namespace vantor::platform::linux {
namespace {

namespace fs = std::filesystem;

/// Real folders and links, and a text that says what is mounted there.
class Mounts : public testing::Test {
protected:
    Mounts() {
        for (const char* const folder : {"disk/net", "disk/a b", "disk/deep/under", "disk/auto"}) {
            fs::create_directories(tree.root() / folder);
        }
        const std::string disk = tree.root() / "disk";
        text = "30 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
               "31 30 8:2 / " +
               disk + " rw,nosuid shared:5 master:2 - btrfs /dev/sdb rw\n" + "32 31 0:40 / " + disk +
               "/net rw - nfs4 server:/x rw\n" + "33 31 0:41 / " + disk +
               "/a\\040b rw - fuse.sshfs host: rw\n" + "34 31 0:42 / " + disk +
               "/auto rw - autofs systemd-1 rw\n" + "35 34 0:43 / " + disk +
               "/auto rw - xfs /dev/sdc rw\n" +                           // on top of it
               "36 30 0:44 / " + disk + "/deep rw - nfs4 server:/y rw\n"; // below the disk, which hides it
    }
    void link(const std::string& target, const char* name) const {
        fs::create_symlink(target, tree.root() / "disk" / name);
    }
    bool local(const std::string& below) const {
        return MountTable(text).isLocal((tree.root() / "disk").string() + below);
    }

    const vantor::tests::TestTree tree;
    std::string text;
};

TEST_F(Mounts, AreLocalByTheirTypeUpToTheTop) {
    for (const char* const yes :
         {"", "/", "/no/such/file", "/auto/x", "/deep/under", "/nets", "/../disk/./deep//"}) {
        EXPECT_TRUE(local(yes)) << yes;
    }
    for (const char* const no : {"/net", "/net/x", "/a b/x", "/deep/../net", "/net/../deep"}) {
        EXPECT_FALSE(local(no)) << no;
    }
    EXPECT_TRUE(MountTable(text).isLocal("/"));
    EXPECT_TRUE(MountTable("1 0 8:1 / / rw - ext4 a rw\n2 1 0:5 / /dev rw - devtmpfs b rw\n"
                           "3 2 0:23 / /dev/shm rw - tmpfs c rw\n")
                    .isLocal("/dev/shm/u"));
    const MountTable nested("1 0 8:1 / / rw - ext4 a rw\n2 1 8:2 / /home\\040of rw - ext4 b rw\n");
    EXPECT_EQ(nested.pointOf("/home of/u/Documents"), "/home of");
    EXPECT_EQ(nested.pointOf("/home off"), "/");
    EXPECT_EQ(MountTable("").pointOf("/home"), "");
    EXPECT_FALSE(MountTable("").isLocal("/"));
    EXPECT_FALSE(MountTable("30 1 8:1 / / rw ext4 /dev/sda1 rw\n").isLocal("/")) << "cut short";
    EXPECT_FALSE(MountTable("30 1 0:2 / / rw - ext4 a rw\n31 30 0:3 / / rw - nfs b rw\n").isLocal("/"));
    EXPECT_FALSE(MountTable("1 2 0:2 / / rw - ext4 a rw\n2 1 0:3 / / rw - ext4 b rw\n").isLocal("/x"))
        << "round in circles";
    const MountTable changedRoot("40 9 0:5 / /dev rw - devtmpfs a rw\n41 9 0:4 / /net rw - nfs4 b rw\n");
    EXPECT_TRUE(changedRoot.isLocal("/home/u"));
    EXPECT_FALSE(changedRoot.isLocal("/net/u"));
    EXPECT_EQ(changedRoot.pointOf("/home/u"), "/");
}

TEST_F(Mounts, AreReachedThroughLinks) {
    link("net/inside", "away");
    link((tree.root() / "disk/deep").string(), "near");
    link("../disk/near/../net", "round");
    link("loop", "loop");
    link("deep/gone", "dangling");
    for (const char* const yes : {"/near/x", "/loop/x", "/dangling/x"}) {
        EXPECT_TRUE(local(yes)) << yes;
    }
    for (const char* const no : {"/away", "/away/x", "/round", "/near/../away"}) {
        EXPECT_FALSE(local(no)) << no;
    }
}

TEST_F(Mounts, StoresOnOthersAreReadAllTheSame) {
    const std::string store = tree.write("disk/net/store.plist", "<plist><dict/></plist>");
    tree.write("proc/self/mountinfo", text);
    posix::UserFolders folders;
    for (const char* const name : {"disk/net/store.plist", "disk/net/none", "disk/net"}) {
        folders.suiteFile = (tree.root() / name).string();
        const auto read = [&folders](const KernelTree& kernel) {
            return *LinuxViewer({folders, false, kernel}).readSuite("group");
        };
        const SuiteFile there = read(KernelTree(tree.root()));
        const SuiteFile here = read(KernelTree("/"));
        EXPECT_EQ(there.path, here.path) << name;
        EXPECT_EQ(there.content, here.content) << name;
        EXPECT_EQ(there.exists, here.exists) << name;
        EXPECT_EQ(there.usable, here.usable) << name;
        EXPECT_EQ(there.reason, here.reason) << name;
    }
}

} // namespace
} // namespace vantor::platform::linux
