// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "StubMachine.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

using namespace vantor::platform;

namespace {

constexpr auto file = NSByteCountFormatterCountStyle::file;
constexpr auto memory = NSByteCountFormatterCountStyle::memory;
constexpr auto decimal = NSByteCountFormatterCountStyle::decimal;
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

std::string text(std::int64_t count, NSByteCountFormatterCountStyle style, const LocaleSigns& signs = {}) {
    return NSByteCountFormatter::stringFromByteCount(count, style, signs);
}

TEST(ByteCount, ReadsAsOnThePhone) {
    const std::map<std::int64_t, std::string> byThousand{
        {0, "Zero KB"},
        {1, "1 byte"},
        {-1, "-1 byte"},
        {999, "999 bytes"},
        {1000, "1 KB"},
        {1001, "1 KB"},
        {1536, "2 KB"},
        {4500, "4 KB"},
        {5500, "6 KB"},
        {99'999, "100 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"},
        {1'050'000, "1 MB"}, // exactly half a tenth, to even
        {1'150'000, "1.2 MB"},
        {1'500'000, "1.5 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {1'005'000'001, "1.01 GB"},
        {11'500'000'000, "11.5 GB"},
        {-12'345'678'987, "-12.35 GB"},
        {999'995'000'000, "1 TB"},
        {std::numeric_limits<std::int64_t>::max(), "9.22 EB"},
        {smallest, "-9.22 EB"},
    };
    for (const auto& [count, expected] : byThousand) {
        EXPECT_EQ(text(count, file), expected) << count;
        EXPECT_EQ(text(count, decimal), expected) << count;
    }
    const std::map<std::int64_t, std::string> by1024{
        {0, "Zero KB"},
        {1023, "1,023 bytes"},
        {-1023, "-1,023 bytes"},
        {1024, "1 KB"},
        {1'040'384, "1,016 KB"},
        {1'048'064, "1 MB"},
        {1'073'689'395, "1,023.9 MB"},
        {1'073'689'396, "1 GB"},
        {1'073'741'824, "1 GB"},
        {3'221'225'472, "3 GB"},
        {smallest, "-8 EB"},
    };
    for (const auto& [count, expected] : by1024) {
        EXPECT_EQ(text(count, memory), expected) << count;
    }
}

TEST(ByteCount, AgreesWithWideArithmeticEverywhere) {
    // The same rule in 80-bit arithmetic, which is exact enough away from ties.
    std::mt19937_64 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    for (int i = 0; i < 20'000; ++i) {
        const auto count = static_cast<std::int64_t>(random() >> (1 + random() % 62));
        for (const auto style : {file, memory}) {
            const std::string shown = text(count, style);
            const long double base = style == memory ? 1024 : 1000;
            const std::size_t blank = shown.find(' ');
            const std::size_t unit = std::string_view("bKMGTPE").find(shown[blank + 1]);
            std::string number = shown.substr(0, blank);
            std::erase(number, ',');
            const long double scale = std::pow(base, static_cast<long double>(unit));
            const long double step = unit <= 1 ? 1.0L : unit == 2 ? 0.1L : 0.01L;
            if (count == 0) {
                continue;
            }
            ASSERT_LT(std::stold(number), base) << count;
            ASSERT_LE(std::abs(std::stold(number) - static_cast<long double>(count) / scale),
                      step * 0.500001L)
                << count << ' ' << shown;
        }
    }
}

TEST(ByteCount, SpeaksTheUsersLanguage) {
    const LocaleSigns french{"fr", ",", "\u202F", "-", LocaleSigns{}.digits};
    EXPECT_EQ(text(0, file, french), "Zéro ko");
    EXPECT_EQ(text(1, file, french), "1 octet");
    EXPECT_EQ(text(1023, memory, french), "1\u202F023 octets");
    EXPECT_EQ(text(1'500'000, file, french), "1,5 Mo");
    const LocaleSigns russian{"ru", ",", "\u00A0", "-", LocaleSigns{}.digits};
    EXPECT_EQ(text(0, file, russian), "0 КБ");
    const std::map<int, std::string> bytes{{1, "1 байт"},     {2, "2 байта"},   {5, "5 байт"},
                                           {11, "11 байт"},   {21, "21 байт"},  {22, "22 байта"},
                                           {112, "112 байт"}, {100, "100 байт"}};
    for (const auto& [count, expected] : bytes) {
        EXPECT_EQ(text(count, file, russian), expected);
    }
    LocaleSigns chinese;
    chinese.language = "zh-Hans";
    EXPECT_EQ(text(512, file, chinese), "512字节");
    EXPECT_EQ(text(5500, file, chinese), "6 KB");
    LocaleSigns arabic{"ar", "٫", "٬", "\u061C-", {"٠", "١", "٢", "٣", "٤", "٥", "٦", "٧", "٨", "٩"}};
    EXPECT_EQ(text(0, file, arabic), "٠ KB");
    EXPECT_EQ(text(-1'250'000'000, file, arabic), "\u061C-١٫٢٥ GB");
    LocaleSigns ungrouped;
    ungrouped.language = "de_AT";
    ungrouped.grouping = "";
    EXPECT_EQ(text(1016, memory, ungrouped), "1016 Byte");
}

TEST(ByteCount, AsksTheMachineAndHardlyAllocates) {
    vantor::tests::StubMachine machine;
    machine.signs.language = "fr";
    EXPECT_EQ(NSByteCountFormatter::stringFromByteCount(2000, file), "2 ko");
    const vantor::tests::AllocationWatch watch;
    EXPECT_EQ(text(smallest, memory), "-8 EB");
    EXPECT_EQ(text(1023, memory), "1,023 bytes");
    EXPECT_LE(watch.allocations(), 2U); // the two default signs' own
}

} // namespace
