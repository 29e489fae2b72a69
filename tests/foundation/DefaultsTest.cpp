// SPDX-License-Identifier: MIT
#include "SimulatedStore.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

using namespace vantor::platform;
using vantor::tests::storeHolding;

namespace {

/// A viewer whose preference suite is this file.
struct SuiteViewer {
    explicit SuiteViewer(const SuiteFile& file) : viewer({.suite = file, .texts = {}, .signs = {}}) {}
    SimulatedViewer viewer;
    Current<Viewer> scope{viewer};
};

std::optional<NSUserDefaults> opened(const SuiteFile& file) {
    const SuiteViewer viewer(file);
    return NSUserDefaults::initWithSuiteName("group");
}

std::string problem(const SuiteFile& file) {
    const SuiteViewer viewer(file);
    (void)NSUserDefaults::initWithSuiteName("group");
    return suiteProblem().value_or("");
}

TEST(UserDefaults, ConvertsValuesAsTheirReadersExpect) {
    const std::optional<NSUserDefaults> store = opened(storeHolding(
        "<key>yes</key><true/><key>no</key><false/><key>zero</key><integer>0</integer><key>tiny</key>"
        "<real>1e-300</real><key>text</key><string>2.5</string><key>data</key><data>eWVz</data>"));
    ASSERT_TRUE(store.has_value());
    for (const char* const yes : {"yes", "tiny", "text"}) {
        EXPECT_TRUE(store->boolForKey(yes)) << yes;
    }
    for (const char* const no : {"no", "zero", "data", "absent"}) {
        EXPECT_FALSE(store->boolForKey(no)) << no;
    }
    EXPECT_EQ(store->stringForKey("text"), "2.5");
    for (const char* const noText : {"yes", "zero", "data", "absent"}) {
        EXPECT_EQ(store->stringForKey(noText), std::nullopt) << noText;
    }
    EXPECT_EQ(store->objectForKey("data")->data(), "yes");
    EXPECT_FALSE(store->objectForKey("absent").has_value());
}

TEST(UserDefaults, ReadsTheTruthInAText) {
    const auto truth = [](const std::string& text) {
        return opened(storeHolding(vantor::tests::storedText("k", text)))->boolForKey("k");
    };
    for (const char* const yes : {"t", "True", "yes", "Y", "  \t Yes", "1", "-1", "+0009", "007 agents"}) {
        EXPECT_TRUE(truth(yes)) << yes;
    }
    for (const char* const no : {"", " ", "no", "false", "0", "-0", "00.9", "--1", "+t", "on", ".5"}) {
        EXPECT_FALSE(truth(no)) << no;
    }
}

TEST(UserDefaults, OpensNothingWithoutADictionaryAndTheHostCanSayWhy) {
    EXPECT_FALSE(opened({"/etc/x", "", false, false, ""}).has_value());
    EXPECT_EQ(problem({"/etc/x", "", false, false, ""}), "");
    EXPECT_EQ(problem(storeHolding("")), "");
    for (const char* const content : {"", "<plist><array/></plist>", "bplist00", "{ a = b; }"}) {
        const SuiteFile file{"/tmp/a\nb\x1b[31m", content, true, true, ""};
        EXPECT_FALSE(opened(file).has_value()) << content;
        EXPECT_TRUE(problem(file).starts_with("/tmp/a\uFFFDb\uFFFD[31m: ")) << problem(file);
    }
    const SuiteFile pipe{"/tmp/pipe", "", true, false, "is not a regular file"};
    EXPECT_FALSE(opened(pipe).has_value());
    EXPECT_EQ(problem(pipe), "/tmp/pipe: is not a regular file");
}

} // namespace
