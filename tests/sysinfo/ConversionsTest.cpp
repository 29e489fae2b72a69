// SPDX-License-Identifier: MIT
#include "sysinfo/PackagesBase/PackagesBase.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <unordered_map>

namespace vantor::PackagesBase {
namespace {

using namespace std::string_literals;
constexpr double inf = std::numeric_limits<double>::infinity();

static_assert(Representable<bool> && Representable<signed char> && Representable<unsigned long long>);
static_assert(Representable<float> && Representable<double> && Representable<long double>);
static_assert(Representable<std::string> && Representable<char[3]> && Representable<std::u8string_view>);
static_assert(!IntegerRepresentable<char> && !StringRepresentable<std::nullptr_t>);

TEST(Conversions, IntegersAreCheckedStrictAndExact) {
    EXPECT_EQ(intValue<std::uint8_t>(255), 255);
    EXPECT_DEATH((void)intValue<std::uint8_t>(300),
                 "fatal: intValue: 300 does not fit an unsigned integer of 8 bits");
    EXPECT_DEATH((void)uInt64Value(-1), "intValue: -1 does not fit an unsigned integer of 64 bits");
    EXPECT_FALSE(isIntOfType(300, std::uint8_t{}));
    EXPECT_FALSE(isUInt64(-1));
    EXPECT_TRUE(isSIntOfType(-128, std::int8_t{}));

    EXPECT_EQ(boolValue(0), false);
    EXPECT_EQ(boolValue(1), true);
    EXPECT_EQ(boolValue(2), std::nullopt);
    EXPECT_EQ(cStyleBoolValue(2), true);
    EXPECT_EQ(cBoolValue<CBool>(-7), 1);
    EXPECT_EQ(stringValue(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(Conversions, IntegersBecomeFloatingPointOnlyExactly) {
    constexpr std::int64_t limit = std::int64_t{1} << 53;
    EXPECT_EQ(doubleValue(limit), 9007199254740992.0);
    EXPECT_EQ(doubleValue(limit + 1), std::nullopt);
    EXPECT_EQ(doubleValue(-limit - 1), std::nullopt);
    EXPECT_EQ(doubleValue(std::numeric_limits<std::int64_t>::min()), -0x1p63);
    EXPECT_EQ(doubleValue(std::numeric_limits<std::int64_t>::max()), std::nullopt);
    EXPECT_EQ(floatValue(std::uint64_t{1} << 63), 0x1p63F);
    EXPECT_EQ(floatValue((1 << 24) + 1), std::nullopt);
#if VANTOR_HAS_FLOAT16
    EXPECT_EQ(float16Value(65504), static_cast<Float16>(65504));
    EXPECT_EQ(float16Value(65536), std::nullopt); // one power of two too far
    EXPECT_EQ(float16Value(2049), std::nullopt);  // one significant bit too many
    EXPECT_EQ(float16Value("1e6"), std::nullopt);
    EXPECT_EQ(intValue<int>(static_cast<Float16>(-2.5)), -3);
#endif
#if VANTOR_HAS_FLOAT80
    EXPECT_EQ(float80Value(std::numeric_limits<std::int64_t>::max()), 9223372036854775807.0L);
#endif
}

TEST(Conversions, FloatingPointRoundsHalvesAwayFromZero) {
    EXPECT_EQ(intValue<Int>(2.5), 3);
    EXPECT_EQ(intValue<Int>(-2.5), -3);
    EXPECT_EQ(intValue<Int>(0.49999999999999994), 0); // adding a half and truncating would give 1
    EXPECT_EQ(intValue<std::uint8_t>(255.5), std::nullopt);
    EXPECT_EQ(intValue<std::uint8_t>(-0.4), 0);
    EXPECT_EQ(intValue<std::int32_t>(1e300), std::nullopt);
    EXPECT_EQ(int64Value(0x1p63), std::nullopt);
    EXPECT_EQ(int64Value(-0x1p63), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(uInt64Value(0x1p63F), std::uint64_t{1} << 63);
    EXPECT_EQ(uInt64Value(0x1p64F), std::nullopt);
    for (const double odd : {inf, -inf, std::nan("")}) {
        EXPECT_EQ(intValue<Int>(odd), std::nullopt);
        EXPECT_FALSE(isInt(odd));
        EXPECT_EQ(boolValue(odd), std::nullopt);
        EXPECT_EQ(cStyleBoolValue(odd), true);
    }
    EXPECT_EQ(floatValue(0.1), 0.1F);
    EXPECT_EQ(floatValue(1e300), std::numeric_limits<float>::infinity());
    EXPECT_EQ(stringValue(-std::nan("")), "nan");
    EXPECT_EQ(stringValue(0.1), "0.1");
}

TEST(Conversions, BoolIsInvertedAsANumber) {
    EXPECT_EQ(intValue<Int>(true), 0);
    EXPECT_EQ(intValue<std::uint8_t>(false), 1);
    EXPECT_EQ(doubleValue(true), 0.0);
    EXPECT_EQ(doubleValue(false), 1.0);
    EXPECT_EQ(boolValue(true), true);
    EXPECT_EQ(cStyleBoolValue(false), false);
    EXPECT_EQ(stringValue(true), "true");
}

TEST(Conversions, TextIsReadWholeAndWithoutALocale) {
    EXPECT_EQ(intValue<std::int8_t>("-128"), -128);
    EXPECT_EQ(intValue<std::int8_t>("128"), std::nullopt);
    EXPECT_EQ(intValue<std::uint64_t>("+18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(intValue<std::uint64_t>("18446744073709551616"), std::nullopt);
    EXPECT_EQ(intValue<std::uint8_t>("-0"), 0);
    for (const char* text : {"", " 1", "1 ", "+", "+-1", "0x10", "1.0", "1,000", "\xD9\xA1"}) {
        EXPECT_EQ(intValue<Int>(text), std::nullopt) << text;
        EXPECT_EQ(cStyleBoolValue(text), std::nullopt) << text;
    }
    EXPECT_EQ(intValue<Int>("1\0"s), std::nullopt);
    EXPECT_EQ(intValue<Int>(u8"42"), 42);

    EXPECT_EQ(boolValue("YES"), true);
    EXPECT_EQ(boolValue("True"), true);
    EXPECT_EQ(boolValue("nO"), false);
    EXPECT_EQ(boolValue("0"), false);
    EXPECT_EQ(boolValue("+1"), true);
    EXPECT_EQ(boolValue("2"), std::nullopt);
    EXPECT_EQ(boolValue("maybe"), std::nullopt);
    EXPECT_EQ(cStyleBoolValue("+7"), true);
    EXPECT_EQ(cStyleBoolValue("-00"), false);
    EXPECT_EQ(cStyleBoolValue("100000000000000000000"), true);
    EXPECT_EQ(cStyleBoolValue("yes"), std::nullopt);

    EXPECT_EQ(doubleValue("+2.5"), 2.5);
    EXPECT_EQ(doubleValue("-inf"), -inf);
    EXPECT_EQ(doubleValue("1e400"), std::nullopt);
    EXPECT_EQ(doubleValue("2,5"), std::nullopt);
    EXPECT_EQ(doubleValue("+-2"), std::nullopt);
}

TEST(Copying, GivesEqualAndIndependentValues) {
    std::map<std::string, std::vector<int>> original{{"a", {1, 2}}, {"b", {}}};
    const auto copied = copy(original);
    EXPECT_EQ(copied, original);
    original["a"].front() = 9;
    EXPECT_EQ(copied.at("a").front(), 1);
    EXPECT_EQ(copy("a\0b"s), "a\0b"s);
    EXPECT_EQ(copy(std::vector<bool>{true, false}), (std::vector<bool>{true, false}));
    static_assert(!Copying<std::string_view>); // it would depend on the original's characters
}

TEST(Parsed, ReplacesEveryOccurrenceOfEachKey) {
    using Keys = std::map<std::string, std::string>;
    EXPECT_EQ(parsed("$a and $a", Keys{{"$a", "x"}}), "x and x");
    EXPECT_EQ(parsed("same", Keys{}), "same");
    EXPECT_EQ(parsed("aaa", Keys{{"aa", "b"}, {"", "no"}}), "ba");
    EXPECT_EQ(parsed("cut\0off"s, Keys{}), "cut");
    std::u8string text = u8"h\u00F6he";
    parse(text, std::unordered_map<std::u8string, std::u8string>{{u8"\u00F6", u8"o"}});
    EXPECT_TRUE(text == u8"hohe"); // the installed GoogleTest cannot print it
}

} // namespace
} // namespace vantor::PackagesBase
