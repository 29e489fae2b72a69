// SPDX-License-Identifier: MIT
#include "StubMachine.hpp"
#include "platform/foundation/NSFileManager.hpp"
#include "platform/foundation/NSProcessInfo.hpp"
#include "platform/foundation/NSUserDefaults.hpp"

#include <gtest/gtest.h>

using namespace vantor::platform;
using vantor::tests::StubMachine;

namespace {

std::string list(std::string_view content) {
    return std::string("<plist><dict>").append(content).append("</dict></plist>");
}

TEST(UserDefaults, ConvertsValuesAsTheirReadersExpect) {
    StubMachine machine;
    machine.store(
        list("<key>yes</key><true/><key>no</key><false/><key>zero</key><integer>0</integer><key>tiny</key>"
             "<real>1e-300</real><key>text</key><string>2.5</string><key>data</key><data>eWVz</data>"));
    const std::optional<NSUserDefaults> store = NSUserDefaults::initWithSuiteName("group");
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
    StubMachine machine;
    const auto truth = [&machine](const std::string& text) {
        machine.store(list("<key>k</key><string>" + text + "</string>"));
        return NSUserDefaults::initWithSuiteName("group")->boolForKey("k");
    };
    for (const char* const yes : {"t", "True", "yes", "Y", "  \t Yes", "1", "-1", "+0009", "007 agents"}) {
        EXPECT_TRUE(truth(yes)) << yes;
    }
    for (const char* const no : {"", " ", "no", "false", "0", "-0", "00.9", "--1", "+t", "on", ".5"}) {
        EXPECT_FALSE(truth(no)) << no;
    }
}

TEST(UserDefaults, OpensNothingWithoutADictionaryAndTheHostCanSayWhy) {
    StubMachine machine;
    machine.suite = {"/etc/x", "", false, false};
    EXPECT_FALSE(NSUserDefaults::initWithSuiteName("group").has_value());
    EXPECT_FALSE(suiteProblem("group").has_value());

    machine.store(list(""));
    EXPECT_FALSE(suiteProblem("group").has_value());
    machine.suite.path = "/tmp/a\nb\x1b[31m";
    for (const char* const content : {"", "<plist><array/></plist>", "bplist00", "{ a = b; }"}) {
        machine.suite.content = content;
        EXPECT_FALSE(NSUserDefaults::initWithSuiteName("group").has_value()) << content;
        const std::string problem = suiteProblem("group").value_or("");
        EXPECT_TRUE(problem.starts_with("/tmp/a\uFFFDb\uFFFD[31m: ")) << problem;
    }
    machine.suite = {"/tmp/pipe", "", true, false};
    machine.failing = {{"storage", "no"}, {"preferences", "it is no regular file"}};
    EXPECT_FALSE(NSUserDefaults::initWithSuiteName("group").has_value());
    EXPECT_EQ(suiteProblem("group"), "/tmp/pipe: it is no regular file");
}

TEST(FileManager, AnswersOnlyWhatWasAskedAndKnown) {
    StubMachine machine;
    machine.memory = 42;
    machine.onMac = true;
    EXPECT_EQ(NSProcessInfo::processInfo().physicalMemory(), 42U);
    EXPECT_TRUE(NSProcessInfo::processInfo().isiOSAppOnMac());

    const auto urls = [] {
        return NSFileManager::defaultManager().URLsForDirectory(NSDocumentDirectory, NSUserDomainMask);
    };
    EXPECT_TRUE(urls().empty());
    machine.documents = {"/home/user/Documents", "/other"};
    ASSERT_EQ(urls().size(), 2U);
    EXPECT_EQ(urls().front().path(), "/home/user/Documents");
    EXPECT_FALSE(urls().front().resourceValuesForKeys({NSURLVolumeTotalCapacityKey}).has_value());
    machine.capacities = VolumeCapacities{100, 20, std::nullopt};
    const auto values = urls().front().resourceValuesForKeys(
        {NSURLVolumeAvailableCapacityKey, NSURLVolumeAvailableCapacityForImportantUsageKey});
    ASSERT_TRUE(values.has_value());
    EXPECT_EQ(values->objectForKey(NSURLVolumeAvailableCapacityKey), 20);
    EXPECT_EQ(values->objectForKey(NSURLVolumeTotalCapacityKey), std::nullopt);
    EXPECT_EQ(values->objectForKey(NSURLVolumeAvailableCapacityForImportantUsageKey), std::nullopt);
}

} // namespace
