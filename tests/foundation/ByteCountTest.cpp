// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <sstream>

using namespace vantor::platform;

namespace {

using Style = NSByteCountFormatterCountStyle;

/// Signs as they go with each language of the table of texts.
LocaleSigns signsOf(const std::string& language) {
    static const std::map<std::string, LocaleSigns> known{
        {"ar", {"ar", "٫", "٬", "\u061C-", {"٠", "١", "٢", "٣", "٤", "٥", "٦", "٧", "٨", "٩"}}},
        {"de", {"de_AT", ",", ".", "-", LocaleSigns{}.digits}},
        {"fr", {"fr", ",", "\u202F", "-", LocaleSigns{}.digits}},
        {"nl", {"nl", ",", "", "-", LocaleSigns{}.digits}},
        {"ru", {"ru", ",", "\u00A0", "-", LocaleSigns{}.digits}},
    };
    const auto found = known.find(language);
    LocaleSigns signs = found != known.end() ? found->second : LocaleSigns{};
    signs.language = found != known.end() ? signs.language : language;
    return signs;
}

TEST(ByteCount, ReadsAsOnThePhone) {
    const std::map<std::string, Style> styles{
        {"file", Style::file}, {"memory", Style::memory}, {"decimal", Style::decimal}};
    std::ifstream file(VANTOR_TEST_DATA "/data/byte-counts.txt");
    std::string line;
    std::getline(file, line);
    int checked = 0;
    for (; std::getline(file, line); ++checked) {
        std::istringstream fields(line);
        std::string style;
        std::string language;
        std::int64_t count = 0;
        std::string text;
        ASSERT_TRUE(fields >> style >> language >> count && std::getline(fields >> std::ws, text)) << line;
        EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(count, styles.at(style), signsOf(language)), text)
            << line;
    }
    EXPECT_GT(checked, 70);
}

TEST(ByteCount, StaysWithinHalfAStepEverywhere) {
    LocaleSigns signs;
    signs.grouping = "";
    std::mt19937_64 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    for (int i = 0; i < 40'000; ++i) {
        const auto count = static_cast<std::int64_t>(random() >> (1 + random() % 61)) + 1;
        const Style style = i % 2 == 0 ? Style::file : Style::memory;
        const std::string shown = NSByteCountFormatter::stringFromByteCount(count, style, signs);
        const long double value = std::stold(shown);
        const std::size_t unit = std::string_view("bKMGTPE").find(shown[shown.find(' ') + 1]);
        const long double base = style == Style::memory ? 1024 : 1000;
        const long double step = unit <= 1 ? 1.0L : unit == 2 ? 0.1L : 0.01L;
        const long double exact =
            static_cast<long double>(count) / std::pow(base, static_cast<long double>(unit));
        ASSERT_LT(value, base) << count;
        ASSERT_LE(std::abs(value - exact), step * 0.500001L) << count << ' ' << shown;
    }
}

TEST(ByteCount, AsksTheViewerAndDoesNotAllocateForShortTexts) {
    SimulatedViewer viewer({.suite = {}, .texts = {}, .signs = signsOf("fr")});
    const Current<Viewer> scope(viewer);
    EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(2000, Style::file), "2 ko");
    const LocaleSigns signs;
    const vantor::tests::AllocationWatch watch;
    EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(1023, Style::memory, signs), "1,023 bytes");
    EXPECT_EQ(watch.allocations(), 0U);
}

} // namespace
