// SPDX-License-Identifier: MIT
#include "Swapper.hpp"
#include "TreeMachine.hpp"
#include "actions/EmptyTrash.hpp"
#include "actions/ReleaseCaches.hpp"
#include "platform/linux/removal/LinuxDisposal.hpp"
#include "platform/linux/removal/PathPattern.hpp"
#include "platform/linux/removal/ReleasableCount.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <numeric>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using namespace platform::linux;
using platform::CacheItem;
using platform::CacheKind;
using platform::CacheNature;
using testing::HasSubstr;

const auto always = [] { return true; };
const std::string block(8192, 'x');

/// A user with caches in a home of the test's own, no other volume, and processes of the test's own.
class Caches : public testing::Test {
protected:
    Caches() {
        m_tree.write("proc/self/mountinfo", localRoot);
        fs::create_directories(home() / ".local/share/Trash/info");
    }
    [[nodiscard]] fs::path home() const { return m_tree.root() / "home"; }
    [[nodiscard]] fs::path cache() const { return home() / ".cache"; }
    void put(const std::string& path) const { m_tree.write("home/" + path, block); }
    [[nodiscard]] bool holds(const std::string& path) const { return fs::exists(home() / path); }
    [[nodiscard]] std::vector<CacheItem> listed() { return m_disposal.releasableParts(always).caches; }
    [[nodiscard]] CacheItem item(const std::string& name) {
        const std::vector<CacheItem> items = listed();
        const auto found = std::ranges::find(items, name, &CacheItem::name);
        return found != items.end() ? *found : CacheItem{.name = "none"};
    }
    Released release(const std::string& name) { return ReleaseCaches({item(name)}).run(always); }

    /// The blocks below a folder, by another way than ours.
    [[nodiscard]] static std::uint64_t blocksBelow(const fs::path& folder) {
        const auto entries = fs::recursive_directory_iterator(folder);
        return std::accumulate(begin(entries), end(entries), std::uint64_t{0},
                               [](std::uint64_t sum, const auto& e) {
                                   struct stat about {};
                                   return ::lstat(e.path().c_str(), &about) == 0
                                              ? sum + static_cast<std::uint64_t>(about.st_blocks) * 512
                                              : sum;
                               });
    }

    const TestTree m_tree{TestTree::inMemory()};
    LinuxDisposal m_disposal{{KernelTree(m_tree.root().string()), homeBelow(m_tree.root()), home().string()}};
    platform::Current<platform::Disposal> m_current{m_disposal};
};

/// What people lost to cleaners, each with what may be released beside it.
const std::vector<std::string> mayGo{"pip/http/1/a",
                                     "thumbnails/large/a.png",
                                     "mozilla/firefox/p.default/cache2/entries/1",
                                     "chromium/Default/Code Cache/js/1",
                                     "go-build/00/x",
                                     "gegl-0.4/swap",
                                     "JetBrains/Idea2024.1/caches/c"};
const std::vector<std::string> mustStay{"obexd/.keep",
                                        "keepassxc/keepassxc.ini",
                                        "evolution/mail/1",
                                        "spotify/Storage/song",
                                        "ibus/bus/words",
                                        "ibus-table/words",
                                        "rclone/vfs/not-sent",
                                        "wallpaper/w",
                                        "kwin/k",
                                        "plasmashell/p",
                                        "icons.kcache",
                                        "qtshadercache-x86_64/s",
                                        "mesa_shader_cache/m",
                                        "drkonqi/d",
                                        "JetBrains/Idea2024.1/LocalHistory/h",
                                        "mozilla/firefox/p.default/startupCache/s",
                                        "chromium/Default/other",
                                        "unheard-of/file",
                                        "loose"};

TEST_F(Caches, AreListedPartByPartAndOnlyWhatComesBackGoes) {
    for (const auto* const paths : {&mayGo, &mustStay}) {
        for (const std::string& path : *paths) {
            put(".cache/" + path);
        }
    }
    put(".ccache/a/object");
    put(".ccache/ccache.conf");
    put("outside/kept");
    fs::create_directory_symlink(home() / "outside", cache() / "yarn");
    fs::create_directory_symlink(home() / "outside", cache() / "pip/link");
    m_tree.write("home/.cache/unheard-of/CACHEDIR.TAG", "Signature: 8a477f597d28d172789f06886806bc55\nmore");
    put(".local/share/Trash/files/thrown");
    put(".cache/vantor/ours");

    const platform::ReleasableParts parts = m_disposal.releasableParts(always);
    // All of it, but our own folder, and what cannot be released: the folders that make a trash.
    const std::uint64_t ours = blocksBelow(cache() / "vantor") + 0;
    const auto folderBlocks = [](const fs::path& folder) {
        struct stat about {};
        return ::stat(folder.c_str(), &about) == 0 ? static_cast<std::uint64_t>(about.st_blocks) * 512 : 0;
    };
    EXPECT_EQ(parts.bytes(), blocksBelow(cache()) - ours - folderBlocks(cache() / "vantor") +
                                 blocksBelow(home() / ".ccache/a") + folderBlocks(home() / ".ccache/a") +
                                 blocksBelow(home() / ".local/share/Trash/files"));
    EXPECT_GE(parts.trash, block.size());
    std::map<std::string, CacheNature> kept;
    for (const CacheItem& found : parts.caches) {
        EXPECT_EQ(found.kind == CacheKind::kept, found.folders.empty()) << found.name;
        EXPECT_NE(found.name, "vantor");
        if (found.kind == CacheKind::kept) {
            kept[found.name] = found.nature;
        }
    }
    EXPECT_EQ(kept["rclone"], CacheNature::unsent);
    EXPECT_EQ(kept["JetBrains"], CacheNature::history);
    EXPECT_EQ(kept["unheard-of"], CacheNature::unknown);
    EXPECT_TRUE(item("unheard-of").isMarked);
    EXPECT_EQ(item("jetbrains").kind, CacheKind::costly);

    const ReleaseCaches action(parts.caches);
    const Released result = action.run(always);
    EXPECT_THAT(result.problems, testing::IsEmpty());
    EXPECT_EQ(result.items, action.items().size());
    EXPECT_EQ(result.bytes, action.bytes());
    for (const std::string& path : mayGo) {
        EXPECT_FALSE(holds(".cache/" + path)) << path;
    }
    EXPECT_FALSE(holds(".ccache/a"));
    for (const std::string& path : mustStay) {
        EXPECT_TRUE(holds(".cache/" + path)) << path;
    }
    EXPECT_TRUE(holds(".ccache/ccache.conf") && holds("outside/kept") && holds(".cache/vantor/ours"));
}

TEST_F(Caches, WhoeverForgesAListGetsNothing) {
    put("outside/kept");
    put(".cache/spotify/Storage/song");
    put(".cache/pip/a");
    const auto forged = [this](const std::string& name, const fs::path& folder) {
        struct stat about {};
        EXPECT_EQ(::stat(folder.c_str(), &about), 0);
        CacheItem made = item("pip");
        made.name = name;
        made.folders = {{folder.string(), {about.st_dev, about.st_ino}}};
        return m_disposal.remove(made, always);
    };
    EXPECT_THAT(forged("spotify", cache() / "spotify").problem, HasSubstr("no cache that is known"));
    EXPECT_EQ(forged("pip", home() / "outside").entries, 0U);
    EXPECT_EQ(forged("pip", cache() / "spotify").entries, 0U);
    EXPECT_TRUE(holds("outside/kept") && holds(".cache/spotify/Storage/song") && holds(".cache/pip/a"));
}

TEST_F(Caches, WaitForTheProgramThatUsesThem) {
    put(".cache/mozilla/firefox/p/cache2/e");
    put(".cache/chromium/Default/Cache/e");
    const CacheItem before = item("firefox");
    EXPECT_TRUE(before.isReleasable() && item("chromium").isReleasable());
    m_tree.write("proc/4711/comm", "firefox-esr\n");
    m_tree.write("proc/4712/comm", "renamed\n"); // the lock tells
    fs::create_directories(home() / ".config/chromium");
    fs::create_symlink("host-4712", home() / ".config/chromium/SingletonLock");
    EXPECT_EQ(item("firefox").usedBy, "firefox-esr");
    EXPECT_EQ(item("chromium").usedBy, "chromium");
    const Released result = ReleaseCaches({before, item("chromium")}).run(always); // it was started meanwhile
    EXPECT_THAT(result.problems, testing::ElementsAre("firefox: firefox-esr is running"));
    EXPECT_TRUE(holds(".cache/mozilla/firefox/p/cache2/e") && holds(".cache/chromium/Default/Cache/e"));
    fs::remove_all(m_tree.root() / "proc/4711");
    fs::remove_all(m_tree.root() / "proc/4712"); // what is left of the lock is a dead one's
    EXPECT_TRUE(release("firefox").problems.empty() && release("chromium").problems.empty());
    EXPECT_FALSE(holds(".cache/mozilla/firefox/p/cache2") || holds(".cache/chromium/Default/Cache"));
}

TEST_F(Caches, KeepWhatChangedMeanwhileAndStopAtEveryEntry) {
    for (const char* const path : {"pip/a", "yarn/old", "yarn/deep/one", "sccache/a", "sccache/b"}) {
        put(std::string(".cache/") + path);
    }
    fs::create_hard_link(cache() / "yarn/old", cache() / "yarn/again"); // losing a name is no change
    const ReleaseCaches action({item("pip"), item("yarn")});
    fs::rename(cache() / "pip", cache() / "pip-before");
    put(".cache/pip/exchanged");
    struct stat about {};
    do { // until the file system's clock has moved on
        put(".cache/yarn/deep/new");
        ASSERT_EQ(::stat((cache() / "yarn/deep/new").c_str(), &about), 0);
    } while (about.st_ctim.tv_sec * 1'000'000'000 + about.st_ctim.tv_nsec <= action.items().at(1).listed);
    const Released result = action.run(always);
    EXPECT_THAT(result.problems, testing::ElementsAre("pip: is another file than before",
                                                      "new: was written after it was listed"));
    EXPECT_TRUE(holds(".cache/pip/exchanged") && holds(".cache/yarn/deep/new"));
    EXPECT_FALSE(holds(".cache/yarn/old") || holds(".cache/yarn/again") || holds(".cache/yarn/deep/one"));

    const ReleaseCaches stopped({item("sccache")});
    // Asked once for the cache, once for its folder, and once for each of its files: the second one stays.
    EXPECT_THAT(stopped.run([left = 3]() mutable { return --left >= 0; }).problems.at(0),
                HasSubstr("stopped"));
    EXPECT_NE(holds(".cache/sccache/a"), holds(".cache/sccache/b"));
}

TEST_F(Caches, LoseNothingOutsideToAProgramThatSwapsFoldersForLinks) {
    constexpr int rounds = 60;
    const Swapper swapper(
        cache(), {{"mozilla"}, {"mozilla", "firefox"}, {"mozilla", "firefox", "p", "cache2"}, {"pip"}},
        m_tree.root());
    std::size_t released = 0;
    const auto isOver = [&](int round) {
        return !swapper.keptAll() || (round >= rounds && swapper.hasSwapped() && released > 0);
    };
    for (int i = 0; i < 100 * rounds && !isOver(i); ++i) {
        for (const char* const folder :
             {"mozilla/firefox/p/cache2/a", "mozilla/firefox/p/cache2/b", "pip/c", "pip/d"}) {
            std::error_code inTheWay; // of the link that stands there just now
            fs::create_directories(cache() / folder, inTheWay);
        }
        released += ReleaseCaches(listed()).run(always).items;
    }
    EXPECT_GT(released, 0U);
    EXPECT_TRUE(swapper.keptAll());
}

TEST_F(Caches, AreNoneWhereTheCacheFolderHoldsTheHome) {
    put("torch/own-work");
    for (const fs::path& folder : {home(), m_tree.root(), fs::path("/")}) {
        auto folders = homeBelow(m_tree.root());
        folders.cache = folder.string();
        const KernelTree kernel(m_tree.root().string());
        LocalPaths paths(kernel);
        const auto some = [left = 1000]() mutable { return --left >= 0; };
        EXPECT_TRUE(countReleasable({kernel, folders, home().string()}, paths, some).caches.empty())
            << folder;
    }
    EXPECT_TRUE(holds("torch/own-work"));
}

/// The whole way: the widget's machine, an action in another program, the widget's next report.
TEST_F(Caches, ReleasedOnesAreShownByTheWidgetOnce) {
    constexpr std::int64_t much = 1 << 24, part = 1 << 21;
    m_tree.write("home/.cache/pip/big", std::string(much, 'x'));
    m_tree.write("home/.local/share/Trash/files/big", std::string(much, 'x'));
    EXPECT_GE(m_disposal.releasableParts(always).bytes(), 2U * much);
    TreeMachine widget(m_tree.root());
    ScanPace pace;
    pace.firstDelay = std::chrono::hours(1);
    widget->startReleasableScan(pace);
    const auto report = [&] {
        widget.pass(std::chrono::seconds(2));
        return widget->volumeCapacities(home().string()).value();
    };
    const auto first = report();
    const auto near = [&](const platform::VolumeCapacities& now, std::int64_t released) {
        EXPECT_NEAR(static_cast<double>(*now.availableForImportantUsage - *now.available),
                    static_cast<double>(2 * much - released), part);
        EXPECT_NEAR(static_cast<double>(*now.availableForImportantUsage),
                    static_cast<double>(*first.availableForImportantUsage), part);
    };
    near(first, 0);
    const Released caches = release("pip");
    EXPECT_NEAR(static_cast<double>(caches.gained.value()), much, part);
    near(report(), much);
    m_tree.write("ballast",
                 std::string(much, 'x')); // what is written later takes room, and brings nothing back
    EXPECT_EQ(EmptyTrash().run(always).items, 1U);
    const auto last = report();
    EXPECT_LT(*last.availableForImportantUsage - *last.available, part);
}

TEST(PathPattern, GoesThroughNoLinkAndNoHiddenName) {
    const TestTree tree;
    for (const char* const folder : {"a/x/c", "a/y/c", "a/.z/c", "elsewhere/c"}) {
        fs::create_directories(tree.root() / folder);
    }
    fs::create_directory_symlink(tree.root() / "elsewhere", tree.root() / "a/l");
    std::vector<std::string> found;
    findPaths(tree.root().string(), "a/*/c",
              [&](int, const char*, const std::string& path, const struct stat&) {
                  found.push_back(path.substr(tree.root().string().size()));
              });
    EXPECT_THAT(found, testing::UnorderedElementsAre("/a/x/c", "/a/y/c"));
}

} // namespace
} // namespace vantor::tests
