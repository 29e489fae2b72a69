// SPDX-License-Identifier: MIT
#include "platform/posix/FileReplacement.hpp"

#include "TestTree.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <iterator>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using platform::posix::makeFoldersTo;
using platform::posix::replaceFile;

mode_t modeOf(const fs::path& path) {
    struct stat about {};
    ::lstat(path.c_str(), &about);
    return about.st_mode;
}

std::size_t entriesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

class FileReplacement : public testing::Test {
protected:
    void expectRefused(const std::string& path, const std::string& why) {
        EXPECT_EQ(replaceFile(path, "new").value_or("written"), path + ": " + why);
    }
    const TestTree m_tree;
    const std::string m_root = m_tree.root().string();
};

TEST_F(FileReplacement, ReplacesRegularFilesAndKeepsTheirModes) {
    const mode_t before = ::umask(022);
    const std::string file = m_root + "/h\xFF m/deeper/state"; // a name is bytes
    EXPECT_EQ(makeFoldersTo(file), std::nullopt);
    EXPECT_EQ(modeOf(m_root + "/h\xFF m") & 0777U, 0700U);
    EXPECT_EQ(replaceFile(file, "first"), std::nullopt);
    EXPECT_EQ(modeOf(file), static_cast<mode_t>(S_IFREG | 0600));
    ::chmod(file.c_str(), 0640);
    EXPECT_EQ(replaceFile(file, std::string(300'000, 'x')), std::nullopt);
    EXPECT_EQ(modeOf(file) & 0777U, 0640U);
    EXPECT_EQ(fileContent(file).size(), 300'000U);
    EXPECT_EQ(replaceFile(m_root + "/shared", "", 0666), std::nullopt);
    EXPECT_EQ(modeOf(m_root + "/shared") & 0777U, 0644U);
    EXPECT_EQ(makeFoldersTo(m_root + "/shared/x").value_or("made"), m_root + "/shared: Not a directory");
    EXPECT_EQ(replaceFile(m_root + '/' + std::string(255, 'n'), "long"), std::nullopt);
    ::umask(before);
}

TEST_F(FileReplacement, FollowsOnlyLinksOfThisUserOrRoot) {
    m_tree.write("real/file", "old");
    fs::create_symlink("real/file", m_root + "/near");
    fs::create_symlink(m_root + "/near", m_root + "/far");
    EXPECT_EQ(replaceFile(m_root + "/far", "new"), std::nullopt);
    EXPECT_EQ(fileContent(m_root + "/real/file"), "new");
    EXPECT_TRUE(fs::is_symlink(m_root + "/far"));
    EXPECT_EQ(entriesIn(m_root + "/real"), 1U);
    fs::create_symlink("turn", m_root + "/turn");
    expectRefused(m_root + "/turn", "Too many levels of symbolic links");
    fs::create_directory_symlink("real", m_root + "/way");
    EXPECT_EQ(replaceFile(m_root + "/way/../way//file", "newer"), std::nullopt);
    EXPECT_EQ(fileContent(m_root + "/real/file"), "newer");
    expectRefused(m_root + "/way/", "Is a directory");
    expectRefused(m_root + "/turn/file", "Too many levels of symbolic links");
    const auto give = [this](const char* link) {
        return ::lchown((m_root + link).c_str(), 12345, 12345) == 0;
    };
    if (give("/near") && give("/way")) { // root alone can plant them
        expectRefused(m_root + "/far", "is a link of another user's");
        const std::string refusal = m_root + "/way: is a link of another user's";
        EXPECT_EQ(replaceFile(m_root + "/way/file", "new"), refusal);
        EXPECT_EQ(makeFoldersTo(m_root + "/way/deeper/file"), refusal);
        EXPECT_EQ(entriesIn(m_root + "/real"), 1U);
        EXPECT_EQ(fileContent(m_root + "/real/file"), "newer");
    }
}

TEST_F(FileReplacement, WritesIntoWhatIsNoFileAndRefusesByName) {
    const std::string pipe = m_root + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    expectRefused(pipe, "No such device or address"); // nobody reads
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(replaceFile(pipe, "through"), std::nullopt);
    std::array<char, 16> got{};
    EXPECT_EQ(::read(reader, got.data(), got.size()), 7);
    EXPECT_EQ(replaceFile("/dev/fd/" + std::to_string(::open(pipe.c_str(), O_WRONLY)), "again"),
              std::nullopt);
    EXPECT_EQ(::read(reader, got.data(), got.size()), 5);
    EXPECT_TRUE(S_ISFIFO(modeOf(pipe)));
    fs::create_symlink("/dev/null", m_root + "/nowhere");
    EXPECT_EQ(replaceFile(m_root + "/nowhere", "gone"), std::nullopt);
    EXPECT_TRUE(S_ISCHR(modeOf("/dev/null")));

    expectRefused(m_root, "Is a directory");
    expectRefused("state", "is no absolute path");
    expectRefused("", "is no absolute path");
    expectRefused(m_root + "/missing/file", "No such file or directory");
    EXPECT_EQ(entriesIn(m_root), 2U);
}

TEST_F(FileReplacement, LeavesTheOldFileWhereTheNewOneCannotBeWhole) {
    m_tree.write("file", "old");
    struct rlimit before {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const struct rlimit little {
        4096, before.rlim_max
    };
    const auto signal = std::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &little);
    const auto outcome = replaceFile(m_root + "/file", std::string(5000, 'x'));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signal);
    EXPECT_EQ(outcome, m_root + "/file: File too large");
    EXPECT_EQ(fileContent(m_root + "/file"), "old");
    EXPECT_EQ(entriesIn(m_root), 1U);
}

} // namespace
} // namespace vantor::tests
