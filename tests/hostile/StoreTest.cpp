// SPDX-License-Identifier: MIT
#include "BinaryList.hpp"
#include "SimulatedStore.hpp"
#include "TreeStage.hpp"
#include "settings/ChartColor.hpp"
#include "settings/SharedStore.hpp"

#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <ctime>
#include <functional>
#include <thread>

// The preference file is written by others. Whatever stands in its place, the widget goes on with its
// defaults at once and leaves the file as it is.
namespace vantor::tests {
namespace {

namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

struct Hostile {
    std::string name;
    std::function<void(const fs::path&)> make;
};

Hostile content(std::string name, std::string bytes) {
    return {std::move(name),
            [bytes = std::move(bytes)](const fs::path& path) { std::ofstream(path) << bytes; }};
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

std::string sharedReferenceBomb() {
    BinaryList bomb;
    for (std::uint64_t i = 0; i < 34; ++i) {
        bomb.objects.push_back(bomb.array({i + 1, i + 1}));
    }
    bomb.objects.push_back(BinaryList::text("boom"));
    return bomb.bytes();
}

std::string dictionaryThatHoldsItself() {
    return BinaryList{"\xD1\x01" + std::string(1, '\0'), BinaryList::text("chartcolor")}.bytes();
}

std::string deepBinary() {
    BinaryList deep;
    deep.referenceWidth = 3;
    for (std::uint64_t i = 0; i < 60'000; ++i) {
        deep.objects.push_back(deep.array({i + 1}));
    }
    deep.objects.emplace_back("\x09");
    return deep.bytes();
}

const std::string billionLaughs =
    R"(<?xml version="1.0"?><!DOCTYPE plist [<!ENTITY a "ha"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">)"
    R"(<!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;"><!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">)"
    R"(<!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;"><!ENTITY f SYSTEM "file:///etc/hostname">]>)"
    R"(<plist><dict><key>refreshSeconds</key><string>&e;&f;</string></dict></plist>)";

std::vector<Hostile> hostileStores() {
    return {
        {"absent", [](const fs::path&) {}},
        {"folder", [](const fs::path& path) { fs::create_directory(path); }},
        {"fifo", [](const fs::path& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
        {"link loop", [](const fs::path& path) { fs::create_symlink(path, path); }},
        {"device", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); }},
        {"kernel text", [](const fs::path& path) { fs::create_symlink("/proc/self/status", path); }},
        {"sparse",
         [](const fs::path& path) {
             std::ofstream(path).close();
             fs::resize_file(path, std::uintmax_t{10} << 30);
         }},
        content("empty", ""),
        content("NULs", std::string(100'000, '\0')),
        content("text", "refreshSeconds = 5\n"),
        content("number on top", "<plist><integer>5</integer></plist>"),
        content("bare magic", "bplist00"),
        content("lists nested 100,000 deep", "<plist>" + repeated("<array>", 100'000)),
        content("lists nested a million deep", "<plist>" + repeated("<array>", 1'000'000)),
        content("binary lists nested 60,000 deep", deepBinary()),
        content("bomb of shared references", sharedReferenceBomb()),
        content("dictionary that holds itself", dictionaryThatHoldsItself()),
        content("entities", billionLaughs),
        content("100,000 keys",
                "<plist><dict>" + repeated("<key>k</key><true/>", 50'000) + "</dict></plist>"),
        content("wide text", "<plist><dict><key>refreshSeconds</key><string>" + std::string(1'000'000, 'x') +
                                 "</string></dict></plist>"),
    };
}

class StoreTest : public testing::Test {
protected:
    void expectDefaults(const std::string& what) {
        EXPECT_EQ(refreshInterval(), 2.0) << what;
        EXPECT_FALSE(sharedFlag(SettingsKey::isInactiveRAMHide)) << what;
        EXPECT_FALSE(sharedFlag(SettingsKey::isReleasableSTORAGEShow)) << what;
        EXPECT_FALSE(sharedFlag(SettingsKey::preventCleanRAMFromWidget)) << what;
        EXPECT_FALSE(storedChartColor().has_value()) << what;
    }
    void refreshWithTicks() {
        stage.figures.user += 100;
        stage.figures.write(stage.tree);
        stage.controller->manualInfoRefresh(nullptr);
        stage.play();
    }

    TreeStage stage;
    const fs::path store = stage.tree.root() / storeFile;
};

double threadMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// A line of /proc/self/status in bytes ("VmRSS", and "VmHWM" for the most since the mark was reset).
double memoryLine(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ':')) {
            return std::stod(line.substr(name.size() + 1)) * 1024;
        }
    }
    return 0;
}

struct FileState {
    explicit FileState(const fs::path& path) { exists = ::lstat(path.c_str(), &about) == 0; }
    bool operator==(const FileState& other) const {
        const auto same = [](const timespec& a, const timespec& b) {
            return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
        };
        return exists == other.exists && about.st_ino == other.about.st_ino &&
               about.st_size == other.about.st_size && about.st_mode == other.about.st_mode &&
               same(about.st_mtim, other.about.st_mtim) && same(about.st_ctim, other.about.st_ctim);
    }
    struct stat about {};
    bool exists;
};

TEST_F(StoreTest, whateverStandsInItsPlaceMeansDefaultsAtOnce) {
    stage.load();
    for (const Hostile& hostile : hostileStores()) {
        hostile.make(store);
        const FileState before(store);
        const double held = memoryLine("VmRSS");
        std::ofstream("/proc/self/clear_refs") << 5; // forgets the most memory so far
        const double start = threadMilliseconds();
        EXPECT_EQ(refreshInterval(), 2.0) << hostile.name;
        const double once = threadMilliseconds() - start;
        expectDefaults(hostile.name);
        refreshWithTicks();
        const double more = memoryLine("VmHWM") - held;
        if (!sanitized) {
            EXPECT_LT(once, 50) << "milliseconds: " << hostile.name;
            EXPECT_LT(more, 16e6) << "bytes: " << hostile.name;
        }
        EXPECT_TRUE(before == FileState(store)) << hostile.name;
        EXPECT_EQ(stage.controller->freeRAMLabel->text(), "4.77 GB") << hostile.name;
        fs::remove_all(store);
    }
}

TEST_F(StoreTest, oneThatMayNotBeReadIsNamed) {
    std::ofstream(store) << storeHolding(storedText("refreshSeconds", "5")).content;
    fs::permissions(store, fs::perms::none);
    const int user = ::geteuid() == 0 ? ::setfsuid(65534) : 0; // what root may not do: this thread only
    expectDefaults("unreadable");
    EXPECT_EQ(stage.machine.failedSources(), "preferences ");
    ::setfsuid(static_cast<uid_t>(user));
}

TEST_F(StoreTest, cutAnywhereItMeansDefaults) {
    const std::string xml =
        storeHolding(storedText("refreshSeconds", "5") + storedFlag("isInactiveRAMHide")).content;
    const std::string binary =
        BinaryList{std::string("\xD2\x01\x02\x03\x04"), BinaryList::text("refreshSeconds"),
                   BinaryList::text("isInactiveRAMHide"), BinaryList::text("5"), "\x09"}
            .bytes();
    for (const std::string& whole : {xml, binary}) {
        stage.tree.write(storeFile, whole);
        EXPECT_EQ(refreshInterval(), 5.0);
        EXPECT_TRUE(sharedFlag(SettingsKey::isInactiveRAMHide));
        for (std::size_t length = 0; length < whole.size(); ++length) {
            stage.tree.write(storeFile, whole.substr(0, length));
            expectDefaults("cut at " + std::to_string(length));
        }
    }
}

TEST_F(StoreTest, valuesOfEveryKindUnderEveryKeyHarmNothing) {
    stage.load();
    const std::string kinds[] = {"<true/>",
                                 "<integer>-9223372036854775808</integer>",
                                 "<integer>18446744073709551615</integer>",
                                 "<real>nan</real>",
                                 "<real>-inf</real>",
                                 "<date>2024-05-01T14:03:07Z</date>",
                                 "<data>AAECAw==</data>",
                                 "<data></data>",
                                 "<string></string>",
                                 "<string>nan</string>",
                                 "<string>-1e308</string>",
                                 "<string>1e-320</string>",
                                 "<string>0x1p-3</string>",
                                 "<string>\xD9\xA5</string>",
                                 "<array><true/></array>",
                                 "<dict><key>CF$UID</key><integer>1</integer></dict>"};
    const std::string_view keys[] = {SettingsKey::isInactiveRAMHide, SettingsKey::isReleasableSTORAGEShow,
                                     SettingsKey::preventCleanRAMFromWidget, SettingsKey::refreshSeconds,
                                     SettingsKey::chartcolor};
    for (const std::string& kind : kinds) {
        std::string entries;
        for (const std::string_view key : keys) {
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

TEST_F(StoreTest, onlyAnArchiveOfAnotherClassIsFatal) {
    std::ofstream(store) << storeHolding(storedColor(garbage)).content;
    expectDefaults("garbage");
    std::ofstream(store) << storeHolding(storedColor(archivedString)).content;
    EXPECT_DEATH((void)storedChartColor(), "holds no colour");
}

// One thread writes as fast as it can, the other reads.
class ChangingStore : public StoreTest {
protected:
    void writeWhile(const std::function<void(const std::string&)>& write, const std::function<void()>& read) {
        // Of different lengths, so that neither is a whole list with the other's end.
        const std::string first = storeHolding(storedText("refreshSeconds", "3")).content;
        const std::string second =
            storeHolding(storedText("filler", std::string(9000, 'x')) + storedText("refreshSeconds", "4"))
                .content;
        write(first);
        std::atomic<bool> over{false};
        std::thread writer([&] {
            while (!over) {
                write(second);
                write(first);
            }
        });
        for (int i = 0; i < 3000; ++i) {
            read();
        }
        over = true;
        writer.join();
    }
};

TEST_F(ChangingStore, replacedItIsAlwaysTheOneOrTheOther) {
    writeWhile(
        [this](const std::string& bytes) {
            const fs::path fresh = store.string() + ".new";
            std::ofstream(fresh) << bytes;
            fs::rename(fresh, store);
        },
        [] {
            const double interval = refreshInterval();
            EXPECT_TRUE(interval == 3.0 || interval == 4.0) << interval;
        });
}

TEST_F(ChangingStore, rewrittenInPlaceItIsTheOneTheOtherOrTheDefault) {
    writeWhile([this](const std::string& bytes) { std::ofstream(store) << bytes; },
               [] {
                   const double interval = refreshInterval();
                   EXPECT_TRUE(interval == 2.0 || interval == 3.0 || interval == 4.0) << interval;
               });
}

} // namespace
} // namespace vantor::tests
