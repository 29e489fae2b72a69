// SPDX-License-Identifier: MIT
#include "settings/SharedStore.hpp"

#include "SimulatedStore.hpp"
#include "settings/ChartColor.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace vantor;
using namespace vantor::tests;

namespace {

class SharedStore : public ::testing::Test {
protected:
    void hold(const std::string& entries) {
        m_machine.change([&](platform::SimulatedState& state) { state.suite = storeHolding(entries); });
    }
    double intervalFor(const std::string& seconds) {
        hold(storedText("refreshSeconds", seconds));
        return refreshInterval();
    }

private:
    platform::SimulatedMachine m_machine;
    platform::MachineScope m_scope{m_machine};
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
    for (const char* rejected : {"", "abc", " 5", "&#9;5", "&#10;5", "5 ", "2,5", "5s", "+", "0x", "1e"}) {
        EXPECT_EQ(intervalFor(rejected), 2.0) << rejected;
    }
    EXPECT_EQ(intervalFor("2.5"), 2.5);
    EXPECT_EQ(intervalFor("+0.5"), 0.5);
    EXPECT_EQ(intervalFor("1e1"), 10.0);
    EXPECT_EQ(intervalFor("0x1p2"), 4.0);
    EXPECT_EQ(intervalFor("-3"), -3.0);
    EXPECT_EQ(intervalFor("0"), 0.0);
    EXPECT_TRUE(std::isinf(intervalFor("inf")));
    EXPECT_TRUE(std::isnan(intervalFor("nan")));
}

TEST_F(SharedStore, ChartColorIsAColourOrNothing) {
    EXPECT_FALSE(storedChartColor().has_value());
    hold("<key>chartcolor</key><string>blue</string>");
    EXPECT_FALSE(storedChartColor().has_value());
    hold(storedColor(archivedBlue));
    EXPECT_TRUE(storedChartColor() == platform::UIColor::colorWithRed(0.25, 0.5, 0.75, 1));
    hold(storedColor(archivedClear));
    EXPECT_FALSE(storedChartColor().has_value());

    ::testing::internal::CaptureStdout();
    hold(storedColor(garbage));
    EXPECT_FALSE(storedChartColor().has_value());
    EXPECT_THAT(::testing::internal::GetCapturedStdout(),
                ::testing::EndsWith("] ERRORE in funzione fromData() di Config\n"));
    hold(storedColor(archivedString));
    EXPECT_DEATH((void)storedChartColor(), "holds no colour");
}

} // namespace
