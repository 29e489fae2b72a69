// SPDX-License-Identifier: MIT
#include "Swapper.hpp"
#include "TreeMachine.hpp"
#include "actions/EmptyTrash.hpp"
#include "platform/linux/removal/LinuxDisposal.hpp"
#include "platform/linux/removal/TrashFolders.hpp"
#include "platform/linux/removal/TrashInfo.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using namespace platform::linux;
using testing::HasSubstr;

const auto mayGoOn = [] { return true; };

/// A user with a trash in a home of the test's own, and no other volume.
class Trash : public testing::Test {
protected:
    Trash() {
        m_tree.write("proc/self/mountinfo", localRoot);
        fs::create_directories(trash() / "info");
    }
    [[nodiscard]] fs::path trash() const { return m_tree.root() / "data/Trash"; }
    void put(const std::string& name, const std::string& date = "2024-05-01T14:03:07") const {
        m_tree.write("data/Trash/info/" + name + ".trashinfo",
                     "[Trash Info]\nPath=/home/u/%C3%A9%20" + name + "\nDeletionDate=" + date + "\n");
    }
    [[nodiscard]] bool holds(const std::string& path) const {
        std::error_code error;
        return fs::exists(fs::symlink_status(trash() / path, error));
    }
    /// What a careless deletion would reach.
    void plant(const fs::path& outside) const {
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            m_tree.write(outside / std::string(1, letter) / "kept", "kept");
        }
    }
    [[nodiscard]] long planted(const fs::path& outside) const {
        const auto files = fs::recursive_directory_iterator(m_tree.root() / outside);
        return std::count_if(begin(files), end(files),
                             [](const auto& entry) { return entry.is_regular_file(); });
    }

    const TestTree m_tree{TestTree::inMemory()};
    LinuxDisposal m_disposal{
        {.tree = KernelTree(m_tree.root().string()), .folders = {.data = m_tree.root() / "data"}}};
    platform::Current<platform::Disposal> m_current{m_disposal};
};

TEST_F(Trash, LosesWhatWasListedAndNothingElse) {
    const std::string block(8192, 'x');
    m_tree.write("data/Trash/files/note", block);
    m_tree.write("data/Trash/files/tree/deep/er/file", block);
    m_tree.write("data/Trash/files/exchanged", block);
    m_tree.write("data/Trash/expunged/7", block);
    for (const char* const name : {"note", "tree", "exchanged", "gone"}) {
        put(name);
    }
    plant("outside");
    fs::create_directory_symlink(m_tree.root() / "outside", trash() / "files/link");
    fs::create_directory_symlink(m_tree.root() / "outside", trash() / "files/tree/deep/link");
    fs::permissions(trash() / "files/tree/deep", fs::perms::none); // its owner could not even look into it

    const EmptyTrash action;
    std::string origins;
    for (const platform::TrashItem& item : action.items()) {
        origins += item.origin + '|';
    }
    EXPECT_THAT(origins, HasSubstr("/home/u/\xC3\xA9 note|"));
    EXPECT_EQ(action.items().size(), 6U);
    EXPECT_GE(action.bytes(), 3 * block.size());

    m_tree.write("data/Trash/files/later", block);
    put("later");
    m_tree.write("elsewhere", "new"); // what stands under a listed name now is another file
    fs::rename(m_tree.root() / "elsewhere", trash() / "files/exchanged");
    m_tree.write("data/Trash/files/gone", "back"); // its note is no longer a lost one
    const Released result = action.run(mayGoOn);
    EXPECT_THAT(result.problems, testing::ElementsAre("exchanged: is another file than before"));
    EXPECT_EQ(result.items, 5U);
    EXPECT_GE(result.bytes, 3 * block.size());
    EXPECT_TRUE(result.gained.has_value());
    for (const char* const stays : {"files/later", "info/later.trashinfo", "files/exchanged",
                                    "info/exchanged.trashinfo", "files/gone", "info/gone.trashinfo"}) {
        EXPECT_TRUE(holds(stays)) << stays;
    }
    for (const char* const gone : {"files/note", "info/note.trashinfo", "files/tree", "info/tree.trashinfo",
                                   "files/link", "expunged/7"}) {
        EXPECT_FALSE(holds(gone)) << gone;
    }
    EXPECT_EQ(planted("outside"), 4);
}

TEST_F(Trash, IsEmptiedOnEveryVolumeThatIsTheMachinesOwn) {
    const std::string root = m_tree.root().string();
    const std::string own = ".Trash-" + std::to_string(::geteuid());
    m_tree.write("proc/self/mountinfo", std::string(localRoot) + "2 1 8:2 / " + root +
                                            "/disk rw - ext4 /dev/sdb1 rw\n3 1 0:9 / " + root +
                                            "/cloud rw - fuse.sshfs x rw\n");
    for (const std::string& trash : {"disk/" + own, "cloud/" + own, std::string("data/Trash")}) {
        m_tree.write(trash + "/files/a", "x");
        m_tree.write(trash + "/info/a.trashinfo", "[Trash Info]\nPath=sub/a\n");
    }
    const EmptyTrash action;
    std::vector<std::string> origins;
    for (const platform::TrashItem& item : action.items()) {
        origins.push_back(item.origin);
    }
    EXPECT_THAT(origins, testing::UnorderedElementsAre("sub/a", root + "/disk/sub/a"));
    EXPECT_EQ(action.run(mayGoOn).bytes, action.bytes()) << "the notes count too";
    EXPECT_FALSE(fs::exists(root + "/disk/" + own + "/files/a") || holds("files/a"));
    EXPECT_TRUE(fs::exists(root + "/cloud/" + own + "/files/a"));
}

TEST_F(Trash, CanBeEmptiedByAgeAndStoppedAtEveryEntry) {
    for (const char* const name : {"old", "new", "undated"}) {
        m_tree.write("data/Trash/files/" + std::string(name) + "/file", "x");
    }
    put("old", "2001-01-01T00:00:00");
    put("new", "2098-01-01T00:00:00");
    const EmptyTrash action(1'700'000'000);
    ASSERT_EQ(action.items().size(), 1U);
    const Released stopped = action.run([left = 2]() mutable { return --left >= 0; });
    EXPECT_EQ(stopped.items, 0U);
    EXPECT_THAT(stopped.problems.at(0), HasSubstr("stopped"));
    EXPECT_TRUE(holds("info/old.trashinfo") && holds("files/old/file"));
    EXPECT_TRUE(action.run(mayGoOn).problems.empty());
    EXPECT_FALSE(holds("files/old") || holds("info/old.trashinfo"));
    EXPECT_TRUE(holds("files/new/file") && holds("files/undated/file"));
}

TEST_F(Trash, LosesNothingOutsideToAProgramThatSwapsFoldersForLinks) {
    constexpr int rounds = 60;
    const fs::path item = trash() / "files/item";
    fs::create_directories(item);
    const Swapper swapper(trash() / "files", {{"item"}, {"item", "a"}, {"item", "a", "b"}}, m_tree.root());
    std::size_t emptied = 0;
    for (int i = 0; (i < rounds || !swapper.hasSwapped()) && swapper.keptAll(); ++i) {
        for (const char* const name : {"a/b/a/f", "a/b/b/f", "a/c/f", "a/d/f"}) {
            std::error_code inTheWay; // of the link that stands there just now
            fs::create_directories((item / name).parent_path(), inTheWay);
        }
        emptied += EmptyTrash().run(mayGoOn).items;
    }
    EXPECT_GT(emptied, 0U);
    EXPECT_TRUE(swapper.keptAll());
}

TEST_F(Trash, LeavesWhatIsMountedInside) {
    m_tree.write("data/Trash/files/item/inside/x", "x");
    const std::string inside = (trash() / "files/item/inside").string();
    const pid_t child = ::fork();
    if (child == 0) {
        const bool isMounted = ::unshare(CLONE_NEWNS) == 0 &&
                               ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                               ::mount("none", inside.c_str(), "tmpfs", 0, nullptr) == 0;
        if (!isMounted) {
            ::_exit(77);
        }
        m_tree.write("data/Trash/files/item/inside/kept", "kept");
        const Released result = EmptyTrash().run(mayGoOn);
        const bool isKept = fs::exists(inside + "/kept") && result.problems.size() == 1 && result.items == 0;
        ::_exit(isKept ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WEXITSTATUS(status) == 77) {
        GTEST_SKIP() << "nothing may be mounted here";
    }
    EXPECT_EQ(status, 0);
}

TEST(TrashFolders, AreTheUsersOwnOnLocalVolumes) {
    EXPECT_EQ(localMounts("22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                          "23 22 8:2 / /media/My\\040Disk rw,x shared:1 master:2 - vfat /dev/sdb1 rw\n"
                          "24 22 0:5 / /net rw - nfs4 server:/x rw\n25 22 0:6 / /proc rw - proc proc rw\n"
                          "26 22 0:7 / /home/u/cloud rw - fuse.sshfs x rw\nshort\n"),
              (std::vector<std::string>{"/", "/media/My Disk"}));
    const TestTree tree;
    const std::string root = tree.root().string();
    const std::string user = std::to_string(::geteuid());
    for (const char* const folder : {"data/Trash", "sticky/.Trash", "loose/.Trash", "target", "linked",
                                     "snap/app/12/.local/share/Trash"}) {
        fs::create_directories(tree.root() / folder);
    }
    fs::create_directories(root + "/sticky/.Trash/" + user);
    fs::create_directories(root + "/sticky/.Trash-" + user);
    fs::create_directories(root + "/loose/.Trash/" + user);
    fs::permissions(root + "/sticky/.Trash", fs::perms::all | fs::perms::sticky_bit);
    fs::permissions(root + "/loose/.Trash", fs::perms::all); // anybody could have put a folder there
    fs::create_directory_symlink(root + "/sticky/.Trash", root + "/linked/.Trash");
    fs::create_directory_symlink(root + "/target", root + "/linked/.Trash-" + user);
    const std::vector<std::string> mounts{root + "/sticky", root + "/loose", root + "/linked",
                                          root + "/sticky", root + "/absent"};
    fs::create_directory_symlink(root + "/snap/app/12", root + "/snap/app/current");
    EXPECT_EQ(trashFolders({root + "/data", root, mounts}, ::geteuid()),
              (std::vector<std::string>{root + "/data/Trash", root + "/snap/app/12/.local/share/Trash",
                                        root + "/sticky/.Trash/" + user, root + "/sticky/.Trash-" + user}));
    EXPECT_TRUE(trashFolders({root + "/data", root, mounts}, ::geteuid() + 1).empty());
}

TEST(TrashInfo, IsReadAsTheFormatSays) {
    const auto info =
        parseTrashInfo("[Trash Info]\nX=1\nPath=a%2Fb%zz%\nPath=other\nDeletionDate=2024-05-01T14:03:07\n");
    EXPECT_EQ(info->path, "a/b%zz%");
    EXPECT_TRUE(info->trashed.has_value());
    EXPECT_FALSE(parseTrashInfo("Path=x\n[Trash Info]\n").has_value());
    for (const char* const date : {"", "2024-05-01", "2024-13-01T00:00:00", "2024-05-01 14:03:07",
                                   "x024-05-01T14:03:07", "2024-05-01T14:03:07Z"}) {
        EXPECT_FALSE(parseTrashInfo(std::string("[Trash Info]\nDeletionDate=") + date + "\n")->trashed)
            << date;
    }
}

} // namespace
} // namespace vantor::tests
