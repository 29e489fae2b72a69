// SPDX-License-Identifier: MIT
#include "logging/Logga.hpp"

#include "Output.hpp"
#include "platform/foundation/DateText.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <limits>
#include <memory>
#include <thread>

using vantor::Logga;

namespace {

using ::testing::AnyOf;
using ::testing::EndsWith;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

const char* const stamp = "\\[[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} \\+0000\\]";

TEST(Logga, DecoratesByLevelTagAndThread) {
    EXPECT_EQ(Logga::formatLine("bare", 0), "bare");
    EXPECT_EQ(Logga::formatLine("bare", -3, "tag"), "bare");
    EXPECT_THAT(Logga::formatLine("m", 1), MatchesRegex(std::string(stamp) + "\\[D\\|MAIN\\] m"));
    const char* letters = "DIWE**";
    for (int level = 1; level <= 6; ++level) {
        const std::string expected = std::string("][") + letters[level - 1] + "|MAIN] m";
        EXPECT_THAT(Logga::formatLine("m", level), EndsWith(expected));
    }
    EXPECT_THAT(Logga::formatLine("m", 9, "Config"), EndsWith("][*|MAIN] (Config) m"));
    EXPECT_THAT(Logga::formatLine("m", 2, ""), EndsWith("][I|MAIN] () m"));
    std::string background;
    std::thread([&] { background = Logga::formatLine("m", 4); }).join();
    EXPECT_THAT(background, EndsWith("][E|BKG] m"));
}

TEST(Logga, ShowsTheWallClockUnderAnOffsetThatIsNotTrueOfIt) {
    ::setenv("TZ", "XYZ-05:30", 1); // five and a half hours east
    const auto stampOfNow = [] {
        const auto wall = std::chrono::system_clock::now() + std::chrono::minutes(330);
        return StartsWith("[" + vantor::platform::dateDescription(wall) + "]");
    };
    const auto before = stampOfNow();
    const std::string line = Logga::formatLine("m", 1);
    EXPECT_THAT(line, AnyOf(before, stampOfNow()));
    ::unsetenv("TZ");
}

TEST(Logga, DebugWritesOneLineForAnyItem) {
    const std::string written = vantor::tests::logOf([] {
        Logga::debug(nullptr);
        Logga::debug(std::optional<int>());
        Logga::debug(std::optional<int>(7));
        Logga::debug("text");
        Logga::debug(3.14159265358979);
        Logga::debug(-std::numeric_limits<double>::quiet_NaN());
        Logga::debug(static_cast<const char*>(nullptr));
        Logga::debug(std::shared_ptr<int>());
        Logga::debug(std::uint8_t{65});
        Logga::debug(true);
    });
    EXPECT_THAT(written, MatchesRegex("(\\[.*\\]\\[D.MAIN\\] [^\n]*\n)+"));
    std::string bare;
    for (std::size_t at = 0; (at = written.find("MAIN] ", at)) != std::string::npos;) {
        at += 6;
        bare += written.substr(at, written.find('\n', at) - at) + ";";
    }
    EXPECT_EQ(bare, "nil;nil;7;text;3.14159265358979;nan;nil;nil;65;true;");
}

} // namespace
