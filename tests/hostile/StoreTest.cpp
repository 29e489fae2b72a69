// SPDX-License-Identifier: MIT
#include "SimulatedStore.hpp"
#include "TreeStage.hpp"
#include "settings/ChartColor.hpp"
#include "settings/SharedStore.hpp"

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <set>
#include <sstream>
#include <thread>

// The preference file is written by others. Whatever stands in its place, the widget goes on with its
// defaults at once, names what is wrong, and leaves the file as it is.
namespace vantor::tests {
namespace {

namespace fs = std::filesystem;

class StoreTest : public testing::Test {
protected:
    void expectDefaults(const std::string& what) {
        EXPECT_EQ(refreshInterval(), 2.0) << what;
        EXPECT_FALSE(sharedFlag(SettingsKey::isInactiveRAMHide)) << what;
        EXPECT_FALSE(storedChartColor().has_value()) << what;
    }
    void refreshWithTicks() {
        stage.figures.user += 100;
        stage.figures.write(stage.tree);
        stage.controller->manualInfoRefresh(nullptr);
        stage.play();
    }
    /// What changes with any change of the file.
    [[nodiscard]] std::tuple<ino_t, time_t, long> state() const {
        struct stat about {};
        ::lstat(store.c_str(), &about);
        return {about.st_ino, about.st_ctim.tv_sec, about.st_ctim.tv_nsec};
    }

    TreeStage stage;
    const fs::path store = stage.tree.root() / storeFile;
};

TEST_F(StoreTest, WhateverStandsInItsPlaceMeansDefaultsAndIsNamed) {
    const auto linkTo = [](const char* target) {
        return [target](const fs::path& path) { fs::create_symlink(target, path); };
    };
    const auto holding = [](const std::string& bytes) {
        return [bytes](const fs::path& path) { std::ofstream(path) << bytes; };
    };
    const struct {
        const char* name;
        std::function<void(const fs::path&)> make;
        const char* reason;
    } rows[] = {
        {"absent", [](const fs::path&) {}, ""},
        {"folder", [](const fs::path& path) { fs::create_directory(path); }, "is not a regular file"},
        {"fifo", [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); }, "is not a regular file"},
        {"link loop", linkTo("group.vantor.plist"), "Too many levels of symbolic links"},
        {"device", linkTo("/dev/zero"), "is not a regular file"},
        // A regular file whose content does not fit to its size, as one that is being written.
        {"kernel text", linkTo("/proc/self/status"), "changes while it is read"},
        {"sparse", [&](const fs::path& path) { holding("")(path), fs::resize_file(path, 10LL << 30); },
         "is not under 1 MiB"},
        {"empty", holding(""), "no property list: "},
        {"NULs", holding(std::string(100'000, '\0')), "no property list: "},
        {"text", holding("refreshSeconds = 5\n"), "no property list: "},
        {"no dictionary", holding("<plist><integer>5</integer></plist>"),
         "a property list without a dictionary on top"},
    };
    stage.load();
    for (const auto& row : rows) {
        row.make(store);
        const auto before = state();
        expectDefaults(row.name);
        const std::string problem = platform::suiteProblem().value_or("");
        EXPECT_TRUE(*row.reason == '\0' ? problem.empty()
                                        : problem.starts_with(store.string() + ": " + row.reason))
            << row.name << ": " << problem;
        refreshWithTicks();
        EXPECT_EQ(state(), before) << row.name;
        EXPECT_EQ(stage.controller->freeRAMLabel->text(), "4.77 GB") << row.name;
        fs::remove_all(store);
    }
}

TEST_F(StoreTest, OneThatMayNotBeReadIsNamed) {
    std::ofstream(store) << storeHolding(storedText("refreshSeconds", "5")).content;
    fs::permissions(store, fs::perms::none);
    const int user = ::geteuid() == 0 ? ::setfsuid(65534) : 0; // what root may not do: this thread only
    expectDefaults("unreadable");
    EXPECT_TRUE(platform::suiteProblem());
    ::setfsuid(static_cast<uid_t>(user));
}

TEST_F(StoreTest, ValuesOfEveryKindUnderEveryKeyHarmNothing) {
    stage.load();
    std::istringstream kinds(
        "<true/> <integer>-9223372036854775808</integer> <integer>18446744073709551615</integer> "
        "<real>nan</real> "
        "<real>-inf</real> <date>2024-05-01T14:03:07Z</date> <data>AAECAw==</data> <data></data> "
        "<string></string> <string>nan</string> <string>-1e308</string> <string>1e-320</string> "
        "<string>0x1p-3</string> <string>\xD9\xA5</string> <array><true/></array> "
        "<dict><key>CF$UID</key><integer>1</integer></dict>");
    for (std::string kind; kinds >> kind;) {
        std::string entries;
        for (const std::string_view key :
             {SettingsKey::isInactiveRAMHide, SettingsKey::isReleasableSTORAGEShow,
              SettingsKey::preventCleanRAMFromWidget, SettingsKey::refreshSeconds, SettingsKey::chartcolor}) {
            entries += "<key>" + std::string(key) + "</key>" + kind;
        }
        std::ofstream(store) << storeHolding(entries).content;
        refreshWithTicks();
        stage.controller->cleanRam(nullptr);
        EXPECT_FALSE(storedChartColor().has_value()) << kind;
        stage.advance(600);
        EXPECT_NE(stage.controller->usedRAMLabel->text(), "") << kind;
    }
}

TEST_F(StoreTest, WhileItChangesItIsTheOneTheOtherOrTheDefault) {
    // Of different lengths, so that neither is a whole list with the other's end.
    const std::string first = storeHolding(storedText("refreshSeconds", "3")).content;
    const std::string second =
        storeHolding(storedText("filler", std::string(9000, 'x')) + storedText("refreshSeconds", "4"))
            .content;
    const auto rewrite = [this](const std::string& bytes) { std::ofstream(store) << bytes; };
    const auto replace = [this](const std::string& bytes) {
        const fs::path fresh = store.string() + ".new";
        std::ofstream(fresh) << bytes;
        fs::rename(fresh, store);
    };
    const auto readWhile = [&](const auto& write) {
        write(first);
        std::atomic<bool> over{false};
        std::thread writer([&] {
            while (!over) {
                write(second);
                write(first);
            }
        });
        std::set<double> seen;
        for (int i = 0; i < 3000; ++i) {
            seen.insert(refreshInterval());
        }
        over = true;
        writer.join();
        return seen;
    };
    const auto isAmong = [](const std::set<double>& seen, const std::set<double>& allowed) {
        return std::ranges::includes(allowed, seen);
    };
    EXPECT_TRUE(isAmong(readWhile(rewrite), {2, 3, 4}));
    EXPECT_TRUE(isAmong(readWhile(replace), {3, 4})) << "a replaced file is whole at any time";
}

} // namespace
} // namespace vantor::tests
