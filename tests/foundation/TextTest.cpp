// SPDX-License-Identifier: MIT
#include "platform/core/Utf8.hpp"
#include "platform/foundation/DateText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/foundation/ParseDouble.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>

using namespace vantor::platform;
using std::chrono::system_clock;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Utf8, EveryCharacterComesBackAndNothingElseIsOne) {
    const auto throughBytes = [](char32_t character) {
        std::string bytes;
        appendUtf8(bytes, character);
        std::string_view rest = bytes;
        const std::optional<char32_t> back = takeUtf8(rest);
        return rest.empty() ? back : std::nullopt;
    };
    for (char32_t c = 0; c <= 0x110000; ++c) {
        const bool none = c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF);
        ASSERT_EQ(throughBytes(c), none ? 0xFFFD : c);
    }
    for (std::string_view bad : {"\x80", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                 "\xE2\x82", "\xF5\x80\x80\x80", "\xC3("}) {
        const std::size_t before = bad.size();
        EXPECT_EQ(takeUtf8(bad), std::nullopt);
        EXPECT_EQ(bad.size(), before - 1); // one byte at a time, so that what follows is not lost
    }
}

TEST(ParseDouble, TakesWhatTheCLibraryTakesAndOnlyTheWholeText) {
    const std::pair<const char*, double> accepted[] = {
        {"2.5", 2.5},
        {"1e1", 10},
        {"+3", 3},
        {"-0.5", -0.5},
        {"0x1p-1", 0.5},
        {".5", 0.5},
        {"5.", 5},
        {"1e999", infinity},
        {"1e-999", 0},
        {"-INF", -infinity},
        {"infinity", infinity},
    };
    for (const auto& [text, value] : accepted) {
        EXPECT_EQ(parseDouble(text), value) << text;
    }
    EXPECT_TRUE(std::isnan(parseDouble("nan").value_or(0)));
    EXPECT_TRUE(std::isnan(parseDouble("NAN(7)").value_or(0)));
    for (const char* const text :
         {"", " 3", "\t3", "\n3", "\v3", "\f3", "\r3", "3 ", "2,5", "abc", "1e", "0x", "--1", "+"}) {
        EXPECT_EQ(parseDouble(text), std::nullopt) << text;
    }
    using namespace std::string_view_literals;
    EXPECT_EQ(parseDouble("3\0"sv), std::nullopt);
    EXPECT_EQ(parseDouble("\0003"sv), std::nullopt);
    EXPECT_EQ(parseDouble("3\0004"sv), std::nullopt);
    EXPECT_EQ(parseDouble("\xFF"), std::nullopt);
}

TEST(ParseDouble, IgnoresTheProcessLocale) {
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            EXPECT_EQ(parseDouble("2.5"), 2.5) << name;
            EXPECT_EQ(parseDouble("2,5"), std::nullopt) << name;
        }
    }
    std::setlocale(LC_ALL, "C");
}

TEST(DateText, DescribesAnyInstantInUniversalTime) {
    using namespace std::chrono;
    const auto at = [](auto since) { return dateDescription(system_clock::time_point(since)); };
    EXPECT_EQ(at(seconds(1714572187)), "2024-05-01 14:03:07 +0000");
    EXPECT_EQ(at(milliseconds(1714572187'999)), "2024-05-01 14:03:07 +0000");
    EXPECT_EQ(at(milliseconds(-1)), "1969-12-31 23:59:59 +0000");
    EXPECT_EQ(at(seconds(951782400)), "2000-02-29 00:00:00 +0000");
    EXPECT_EQ(dateDescription(system_clock::time_point::min()), "1677-09-21 00:12:43 +0000");
    EXPECT_EQ(dateDescription(system_clock::time_point::max()), "2262-04-11 23:47:16 +0000");
}

TEST(DateText, FollowsTheZoneAndItsSummer) {
    using namespace std::chrono;
    const system_clock::time_point summer{seconds(1714572187)};
    const system_clock::time_point winter{seconds(1704067200)};
    const char* const before = std::getenv("TZ");
    ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    EXPECT_EQ(secondsFromGMT(summer), hours(2));
    EXPECT_EQ(secondsFromGMT(winter), hours(1));
    ::setenv("TZ", "NST3:30", 1);
    EXPECT_EQ(secondsFromGMT(winter), -(hours(3) + minutes(30)));
    before != nullptr ? ::setenv("TZ", before, 1) : ::unsetenv("TZ");
}

TEST(LocalizedString, ComesFromTheViewerOrIsEnglishAndNeverAKey) {
    SimulatedViewer viewer({.suite = {}, .texts = {{"home_USER", "Utente"}}, .signs = {}});
    const Current<Viewer> scope(viewer);
    EXPECT_EQ(NSLocalizedString("home_USER"), "Utente");
    for (const EnglishText& english : englishTexts()) {
        if (english.key != "home_USER") {
            EXPECT_EQ(NSLocalizedString(english.key), english.text);
        }
        EXPECT_EQ(english.text.find('_'), std::string_view::npos);
    }
    EXPECT_EQ(textWithValue("{a}: {b} {a}", "a", "{b}"), "{b}: {b} {b}");
    EXPECT_EQ(textWithValue("{x", "x", "1"), "{x");
}

} // namespace
