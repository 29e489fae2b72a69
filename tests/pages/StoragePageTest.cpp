// SPDX-License-Identifier: MIT
#include "pages/StoragePage.hpp"

#include "SimulatedStore.hpp"
#include "pages/CacheText.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::CacheItem;
using platform::CacheKind;

namespace {

constexpr std::int64_t day = 86'400, now = 1'700'000'000;

/// A disposal whose list is written down.
class FixedDisposal final : public platform::Disposal {
public:
    platform::TrashContents trashItems(const KeepGoing&) override { return {}; }
    platform::Removal remove(const platform::TrashItem&, const KeepGoing&) override { return {}; }
    platform::ReleasableParts releasableParts(const KeepGoing&) override { return parts; }
    std::vector<std::string> cacheNames() override { return {}; }
    platform::Removal remove(const CacheItem&, const KeepGoing&) override { return {}; }
    std::vector<platform::SystemCache> systemCaches() override { return {}; }
    std::optional<platform::VolumeSpace> volumeOf(const std::string&) override { return {}; }

    platform::ReleasableParts parts;
};

class StoragePageTest : public ::testing::Test {
protected:
    void volume(std::int64_t total, std::int64_t available, std::int64_t important) {
        m_machine.change([=](platform::SimulatedState& state) {
            state.volume = {.total = total, .available = available, .availableForImportantUsage = important};
        });
    }
    void add(CacheItem item) { m_disposal.parts.caches.push_back(std::move(item)); }
    static std::int64_t listed(const StoragePage& page) {
        std::int64_t sum = page.trash + page.rest;
        for (const CacheRow& row : page.caches) {
            sum += static_cast<std::int64_t>(row.item.bytes);
        }
        return sum;
    }

    platform::SimulatedMachine m_machine;
    platform::SimulatedViewer m_viewer;
    FixedDisposal m_disposal;

private:
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
    platform::Current<platform::Disposal> m_currentDisposal{m_disposal};
};

TEST_F(StoragePageTest, AddsUpToTheWidgetsFiguresWhateverItShows) {
    m_disposal.parts.trash = 100;
    add({.name = "kept", .bytes = 500});
    add({.name = "pip", .kind = CacheKind::harmless, .bytes = 200});
    for (const bool isShownApart : {false, true}) {
        m_viewer.change([=](platform::SimulatedViewerState& state) {
            state.suite = storeHolding(storedFlag("isReleasableSTORAGEShow", isShownApart));
        });
        for (const std::int64_t releasable : {800, 900, 700, 0}) {
            volume(10'000, 3000, 3000 + releasable);
            const StoragePage page = storagePage(now).value();
            EXPECT_EQ(page.figures.used + page.figures.releasable + page.figures.available,
                      page.figures.total);
            EXPECT_EQ(page.figures.available, 3000);
            EXPECT_EQ(page.figures.free, isShownApart ? 3000 : 3000 + releasable);
            EXPECT_EQ(page.figures.releasable, releasable);
            EXPECT_EQ(page.rest, releasable - 800);
            EXPECT_EQ(listed(page), releasable);
            EXPECT_EQ(page.offered(), 300);
        }
    }
    volume(0, 0, 0);
    EXPECT_FALSE(storagePage(now).has_value());
}

TEST_F(StoragePageTest, SuggestsOnlyWhatIsHarmlessAndOld) {
    volume(10'000, 3000, 3000);
    const std::int64_t old = now - 91 * day;
    add({.name = "old", .kind = CacheKind::harmless, .bytes = 1, .newest = old});
    add({.name = "fresh", .kind = CacheKind::harmless, .bytes = 2, .newest = now - 89 * day});
    add({.name = "used", .kind = CacheKind::harmless, .bytes = 3, .newest = old, .usedBy = "browser"});
    add({.name = "costly", .kind = CacheKind::costly, .bytes = 4, .newest = old});
    add({.name = "", .bytes = 9, .newest = old});
    std::string rows;
    const StoragePage page = storagePage(now).value();
    for (const CacheRow& row : page.caches) {
        rows += cacheName(row.item) + (row.isSuggested ? "* " : " ");
    }
    EXPECT_EQ(rows, "costly used fresh old* Other files ");
    EXPECT_THAT(cacheSentence(m_disposal.parts.caches[2]), testing::HasSubstr("browser"));
    EXPECT_THAT(cacheSentence(m_disposal.parts.caches[4]), testing::StartsWith("Kept: "));
}

} // namespace
