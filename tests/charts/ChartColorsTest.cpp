// SPDX-License-Identifier: MIT
#include "charts/HexColor.hpp"
#include "charts/LevelColor.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace vantor;
using platform::UIColor;

namespace {

/// The colour as 0xRRGGBB, -1 where the text gives none.
int rgb(const std::string& text) {
    const auto color = colorFromHex(text, 1.0);
    if (!color) {
        return -1;
    }
    const auto byte = [](double component) { return static_cast<int>(component * 255 + 0.5); };
    return byte(color->red()) << 16 | byte(color->green()) << 8 | byte(color->blue());
}

TEST(HexColor, TakesTheLowTwentyFourBitsOfANumber) {
    EXPECT_EQ(rgb("FE9226"), 0xFE9226);
    for (const char* white : {"#fff", "0XFFF", "fff", "FFFFFFFF", "-1", "0xf0xff"}) {
        EXPECT_EQ(rgb(white), 0xFFFFFF) << white;
    }
    EXPECT_EQ(rgb("#12345"), 0x012345);
    EXPECT_EQ(rgb("7FFFFFFFFFFFFFFF"), 0xFFFFFF);
    EXPECT_EQ(rgb("-8000000000000000"), 0);
}

TEST(HexColor, GivesNothingForWhatIsNoNumber) {
    for (const char* bad :
         {"", "#", "0x", "+", "+12", "-", "12G", "#ffgg00", "+-1", " ff", "ff ", "8000000000000000", "é"}) {
        EXPECT_EQ(rgb(bad), -1) << bad;
    }
    EXPECT_FALSE(colorFromComponents(256, 0, 0, 1).has_value());
    EXPECT_FALSE(colorFromComponents(0, -1, 0, 1).has_value());
    EXPECT_EQ(colorFromHex("0", 1.7)->alpha(), 1.0);
    EXPECT_EQ(colorFromHex("0", -0.2)->alpha(), 0.0);
}

TEST(LevelColor, HasFourBandsAndAReversedScaleBelowZero) {
    const UIColor green = UIColor::systemGreenColor();
    const UIColor yellow = UIColor::systemYellowColor();
    const UIColor red = UIColor::systemRedColor();
    const UIColor orange = *colorFromHex("FE9226", 1);
    const std::pair<std::int64_t, UIColor> bands[] = {
        {0, green},    {50, green},   {51, yellow}, {67, yellow},  {68, orange},  {83, orange},
        {84, red},     {1000, red},   {-1, red},    {-16, red},    {-17, orange}, {-33, orange},
        {-34, yellow}, {-50, yellow}, {-51, green}, {-999, green},
    };
    for (const auto& [percent, color] : bands) {
        EXPECT_TRUE(levelColor(percent) == color) << percent;
    }
    EXPECT_DEATH((void)levelColor(std::numeric_limits<std::int64_t>::min()), "magnitude of a level");
}

} // namespace
