// SPDX-License-Identifier: MIT
#include "settings/SharedStore.hpp"

#include "Output.hpp"
#include "SimulatedStore.hpp"
#include "settings/ChartColor.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;

namespace {

class SharedStore : public ::testing::Test {
protected:
    void hold(const std::string& entries) {
        m_viewer.change([&](platform::SimulatedViewerState& state) { state.suite = storeHolding(entries); });
    }
    double intervalFor(const std::string& seconds) {
        hold(storedText("refreshSeconds", seconds));
        return refreshInterval();
    }

private:
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Viewer> m_scope{m_viewer};
};

TEST_F(SharedStore, FlagsAreFalseUntilTheStoreSaysOtherwise) {
    EXPECT_FALSE(sharedFlag(SettingsKey::isInactiveRAMHide)); // no store at all
    hold("");
    EXPECT_FALSE(sharedFlag(SettingsKey::isReleasableSTORAGEShow));
    hold(storedFlag("preventCleanRAMFromWidget"));
    EXPECT_TRUE(sharedFlag(SettingsKey::preventCleanRAMFromWidget)); // read afresh, no handle kept
}

TEST_F(SharedStore, RefreshSecondsMustBeANumberFromEndToEnd) {
    EXPECT_EQ(refreshInterval(), 2.0);
    hold("<key>refreshSeconds</key><integer>5</integer>"); // a number is no string
    EXPECT_EQ(refreshInterval(), 2.0);
    EXPECT_EQ(intervalFor("5s"), 2.0);
    EXPECT_EQ(intervalFor("0.5"), 0.5);
    EXPECT_EQ(intervalFor("-3"), -3.0); // what a timer makes of it is the timer's affair
}

TEST_F(SharedStore, ChartColorIsAColourOrNothing) {
    EXPECT_FALSE(storedChartColor().has_value());
    hold("<key>chartcolor</key><string>blue</string>");
    EXPECT_FALSE(storedChartColor().has_value());
    hold(storedArchive("rgb-blue"));
    EXPECT_TRUE(storedChartColor() == platform::UIColor::colorWithRed(0.25, 0.5, 0.75, 1));
    hold(storedArchive("gray-clear-unnamed"));
    EXPECT_FALSE(storedChartColor().has_value());

    hold(storedColor(garbage));
    EXPECT_THAT(logOf([] { EXPECT_FALSE(storedChartColor().has_value()); }),
                ::testing::EndsWith("] ERRORE in funzione fromData() di Config\n"));
    hold(storedArchive("root-string"));
    EXPECT_DEATH((void)storedChartColor(), "holds no colour");
    EXPECT_FALSE(usableChartColor().has_value());
}

} // namespace
