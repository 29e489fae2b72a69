// SPDX-License-Identifier: MIT
#include "platform/linux/user/SuiteWriter.hpp"

#include "TestTree.hpp"
#include "platform/linux/user/LinuxViewer.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <iterator>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using platform::SuiteEdit;
using platform::SuiteFile;
using platform::linux::changeSuiteFile;

/// However slow the machine is, nobody goes on without the lock.
constexpr std::chrono::hours patience{1};

/// Runs in a process of its own, as other programs' writers do.
template<class Work>
pid_t inProcess(const Work& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

TEST(SuiteWriter, LosesNoUpdateOfFourWritersAtOnce) {
    constexpr int rounds = 50;
    const TestTree tree(TestTree::inMemory());
    const std::string file = (tree.root() / "made/by/them/store").string();
    const std::string link = (tree.root() / "link").string();
    fs::create_symlink(file, link); // who comes by another path is not left out
    std::vector<pid_t> writers;
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        writers.push_back(inProcess([&, letter] {
            for (int i = 0; i < rounds; ++i) {
                const auto append = [letter](const SuiteFile& current) {
                    return SuiteEdit{.content = current.content + letter};
                };
                while (changeSuiteFile(letter == 'a' && fs::exists(file) ? link : file, append, patience)
                           .failure) {
                }
            }
        }));
    }
    for (const pid_t writer : writers) {
        ::waitpid(writer, nullptr, 0);
    }
    const std::string content = fileContent(file);
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        EXPECT_EQ(std::ranges::count(content, letter), rounds) << letter;
    }
    struct stat about {};
    ::stat(file.c_str(), &about);
    EXPECT_EQ(about.st_mode & 0777U, 0600U);
}

TEST(SuiteWriter, KilledAtAnyMomentLeavesTheOldFileOrTheNew) {
    constexpr int kills = 60;
    constexpr std::size_t size = 200'000;
    const TestTree tree(TestTree::inMemory());
    const std::string file = tree.write("store", std::string(size, 'A')).string();
    int finished = 0;
    for (int i = 0; i < kills; ++i) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t writer = inProcess([&] {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
                const auto fill = [letter](const SuiteFile& /*current*/) {
                    return SuiteEdit{.content = std::string(size, letter)};
                };
                (void)changeSuiteFile(file, fill, patience);
                if (::write(ends[1], &letter, 1) != 1) {
                    return;
                }
            }
        });
        char letter = 0;
        for (int left = i % 5; left >= 0; --left) {
            ASSERT_EQ(::read(ends[0], &letter, 1), 1);
        }
        for (int yields = i % 7; yields > 0; --yields) {
            ::sched_yield();
        }
        ::kill(writer, SIGKILL);
        ::waitpid(writer, nullptr, 0);
        ::close(ends[0]);
        ::close(ends[1]);
        const std::string content = fileContent(file);
        ASSERT_EQ(content.size(), size);
        ASSERT_EQ(content, std::string(size, content.front()));
        finished += content.front() != 'A' ? 1 : 0;
    }
    EXPECT_EQ(finished, kills);
    const auto change = [](const SuiteFile& /*current*/) { return SuiteEdit{.content = "last"}; };
    EXPECT_TRUE(changeSuiteFile(file, change, patience).changed);
    EXPECT_EQ(std::distance(fs::directory_iterator(tree.root()), {}), 1) << "something is left behind";
}

TEST(SuiteWriter, ClearsAwayOnlyWhatKilledWritersLeft) {
    const TestTree tree(TestTree::inMemory());
    const std::string file = tree.write("store", "old").string();
    const pid_t ended = inProcess([] {});
    ::waitpid(ended, nullptr, 0);
    const std::string gone = ".vantor-" + std::to_string(ended);
    const std::vector<std::string> kept = {gone + "-1x",           gone,          gone + "-",
                                           gone + "-9.plist",      ".vantor-1-0", ".vantor-0-0",
                                           ".vantor-99999999999-0"};
    for (const std::string& name : kept) {
        tree.write(name, "kept");
    }
    tree.write(gone + "-0", "half");
    tree.write(".vantor-" + std::to_string(::getpid()) + "-7", "of one who had our number");
    const int writing = ::open(tree.write(gone + "-2", "in another container").c_str(), O_RDONLY);
    ASSERT_EQ(::flock(writing, LOCK_EX), 0);
    fs::create_symlink(file, tree.root() / (gone + "-3"));
    fs::create_directory(tree.root() / (gone + "-4"));
    ASSERT_EQ(::mkfifo((tree.root() / (gone + "-5")).c_str(), 0600), 0);
    const auto change = [](const SuiteFile& /*current*/) { return SuiteEdit{.content = "new"}; };
    const int folder = ::open(tree.root().c_str(), O_RDONLY);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);
    EXPECT_TRUE(changeSuiteFile(file, change, std::chrono::milliseconds(1)).changed);
    EXPECT_TRUE(fs::exists(tree.root() / (gone + "-0"))) << "without the lock";
    ::close(folder);
    EXPECT_TRUE(changeSuiteFile(file, change, patience).changed);
    EXPECT_FALSE(fs::exists(tree.root() / (gone + "-0")));
    const auto left = std::distance(fs::directory_iterator(tree.root()), {});
    EXPECT_EQ(left, static_cast<std::ptrdiff_t>(kept.size()) + 4 + 1)
        << "those, the locked, the others and the store";
    ::close(writing);
}

TEST(SuiteWriter, SetsAFileAsideWithoutALossAndTellsWhatIsInTheWay) {
    const TestTree tree;
    const std::string file = tree.write("store", "broken").string();
    const auto renew = [](const SuiteFile& current) {
        return SuiteEdit{.content = current.content + "!", .setAside = true};
    };
    // Where nothing counts as local, a child does it.
    platform::linux::LinuxViewer distant({.folders = {.suiteFile = file},
                                          .useLocale = false,
                                          .tree = platform::linux::KernelTree(tree.root().string())});
    const platform::SuiteChange first = changeSuiteFile(file, renew), second = distant.changeSuite("", renew);
    EXPECT_THAT(first.setAside, testing::StartsWith(file + ".broken-20"));
    EXPECT_EQ(second.setAside, first.setAside + ".2");
    EXPECT_EQ(fileContent(first.setAside) + fileContent(second.setAside) + fileContent(file),
              "brokenbroken!broken!!");

    // A writer that holds its lock for ever holds nobody up.
    const int folder = ::open(tree.root().c_str(), O_RDONLY);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);
    EXPECT_TRUE(changeSuiteFile(file, renew, std::chrono::milliseconds(1)).changed);
    ::close(folder);

    EXPECT_THAT(changeSuiteFile(file + "/below", renew).failure.value_or(""),
                testing::HasSubstr("Not a directory"));
    EXPECT_TRUE(changeSuiteFile("", renew).failure.has_value());
    const auto leave = [](const SuiteFile& /*current*/) { return SuiteEdit(); };
    EXPECT_FALSE(changeSuiteFile(file, leave).changed);
    const platform::SuiteChange refused = distant.changeSuite(
        "", [](const SuiteFile& /*current*/) { return SuiteEdit{.refusal = "no", .couldBeSetAside = true}; });
    EXPECT_TRUE(refused.failure == "no" && refused.couldBeSetAside && !refused.changed);
}

} // namespace
} // namespace vantor::tests
