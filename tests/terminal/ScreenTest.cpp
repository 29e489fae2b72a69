// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/Input.hpp"
#include "hosts/terminal/screen/ScreenWriter.hpp"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>

namespace vantor::hosts::terminal {
namespace {

using platform::Appearance;

Terminfo xterm() {
    ::setenv("TERM", "xterm-256color", 1);
    return Terminfo::fromEnvironment();
}

std::vector<Input> parsed(std::string_view bytes) {
    InputParser parser;
    return parser.parse(bytes);
}

TEST(ScreenWriter, WritesOnlyTheCellsThatChanged) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const Terminfo terminal = xterm();
    ASSERT_TRUE(terminal.canAddress) << "the entry is in Debian's ncurses-base";
    ScreenWriter writer(terminal, ColorDepth::direct);
    Grid grid({40, 3});
    grid.write(0, 0, "Used RAM", {});
    EXPECT_THAT(writer.update(grid), testing::EndsWith("Used RAM"));
    EXPECT_EQ(writer.update(grid), "") << "the same again is free";
    grid.write(5, 0, "r", {});
    EXPECT_EQ(writer.update(grid), "\033[1;6Hr");
    grid.write(0, 1, "a", {});
    grid.write(3, 1, "b", {});
    grid.write(30, 1, "c", {0x34C759, true});
    EXPECT_EQ(writer.update(grid), "\033[2;1Ha  b\033[2;31H\033(B\033[m\033[38;2;52;199;89mc")
        << "short gaps are written over, long ones jumped";
    grid.write(30, 1, "d", {0x34C759, true});
    EXPECT_EQ(writer.update(grid), "\033[2;31Hd") << "the colour is still set";
    writer.forget();
    EXPECT_THAT(writer.update(grid), testing::HasSubstr("\033[H\033[2J"));
}

TEST(ScreenWriter, GroundsAndTheCursorsReverse) {
    const Terminfo terminal = xterm();
    Grid grid({2, 1});
    grid.put(0, 0, U'a', {.rgb = 0xFF0000, .isColored = true, .ground = 0x00FF00, .hasGround = true});
    grid.put(1, 0, U'b', {.isReversed = true});
    EXPECT_THAT(ScreenWriter(terminal, ColorDepth::direct).update(grid),
                testing::EndsWith("\033[38;2;255;0;0m\033[48;2;0;255;0ma\033(B\033[m\033[7mb"));
    EXPECT_THAT(ScreenWriter(terminal, ColorDepth::sixteen).update(grid),
                testing::HasSubstr("\033[91m\033[102ma"));
    EXPECT_THAT(
        ScreenWriter(terminal, ColorDepth::none).update(grid),
        testing::AllOf(testing::Not(testing::HasSubstr("8;")), testing::EndsWith("a\033(B\033[m\033[7mb")));
}

TEST(ScreenWriter, AnOtherCharacterSetAndATerminalThatOnlyPrints) {
    const Terminfo printer;
    ScreenWriter writer(printer, ColorDepth::none);
    Grid grid({6, 1});
    grid.write(0, 0, "34% \u00E9", {0xFF0000, true, true});
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(writer.update(grid), "\r34% ? ");
    EXPECT_EQ(writer.update(grid), "");
    std::setlocale(LC_CTYPE, "C.UTF-8");
}

TEST(Input, SequencesAreTakenApartHoweverTheyArrive) {
    EXPECT_THAT(parsed("rq"), testing::ElementsAre(Input(KeyPress{'r'}), Input(KeyPress{'q'})));
    EXPECT_THAT(parsed("\033OP\033[15~\033[?25;1$y"), testing::IsEmpty()) << "keys without a meaning here";
    EXPECT_THAT(parsed("\033[A\033OD\033[1;5C\033[6~\033[4~\033[H"),
                testing::ElementsAre(Input(CursorKey::up), Input(CursorKey::left), Input(CursorKey::right),
                                     Input(CursorKey::pageDown), Input(CursorKey::end),
                                     Input(CursorKey::home)));
    EXPECT_THAT(parsed("\033[<0;12;3M\033[<0;12;3m\033[<64;1;1M\033[<65;1;1M"),
                testing::ElementsAre(Input(Click{11, 2}), Input(Wheel{true}), Input(Wheel{false})))
        << "not the release";
    EXPECT_THAT(
        parsed("\xC3\xA4\x80\xFF\xE6\xBC\xA2z"),
        testing::ElementsAre(Input(KeyPress{U'\u00E4'}), Input(KeyPress{U'\u6F22'}), Input(KeyPress{'z'})));
    InputParser alone;
    EXPECT_THAT(alone.parse("\033"), testing::IsEmpty());
    EXPECT_TRUE(alone.holdsEscape()) << "until its patience ends";
    EXPECT_EQ(alone.endEscape(), KeyPress{U'\033'});
    EXPECT_THAT(alone.parse("q"), testing::ElementsAre(Input(KeyPress{'q'})));
    EXPECT_THAT(parsed("\033[<0;0;3M\033[<0;99999999999;3M\033[<M"), testing::IsEmpty());
    const std::string answers = "\033]11;rgb:ffff/ffff/dddd\033\\\033[?62;22cq";
    for (std::size_t cut = 0; cut <= answers.size(); ++cut) {
        InputParser parser;
        std::vector<Input> inputs = parser.parse(std::string_view(answers).substr(0, cut));
        for (const Input& input : parser.parse(std::string_view(answers).substr(cut))) {
            inputs.push_back(input);
        }
        EXPECT_THAT(inputs, testing::ElementsAre(Input(Background{0xFFFFDD}), Input(AnswersEnded{}),
                                                 Input(KeyPress{'q'})));
    }
    EXPECT_THAT(parsed("\033]11;rgb:00/00/2b\a"), testing::ElementsAre(Input(Background{0x00002B})));
    EXPECT_THAT(parsed("\033]11;rgba:2828/2828/2828/ffff\a"),
                testing::ElementsAre(Input(Background{0x282828})));
    EXPECT_EQ(appearanceOf({0xFDF6E3}), Appearance::light);
    EXPECT_EQ(appearanceOf({0x002B36}), Appearance::dark);
    EXPECT_THAT(parsed("\033]11;rgb:zz/00/2b\a\033]11;?\a"), testing::IsEmpty());
    EXPECT_THAT(parsed("\033P" + std::string(100'000, 'x') + "\033\\q"),
                testing::Contains(Input(KeyPress{'q'})));
}

TEST(Capabilities, ColoursFollowChoiceEnvironmentAndDatabase) {
    Terminfo terminal;
    terminal.colors = 256;
    const auto depth = [&](const TerminalEnvironment& environment,
                           ColorChoice choice = ColorChoice::automatic) {
        return colorDepthFor(choice, environment, terminal);
    };
    EXPECT_EQ(depth({"xterm-256color", "", "", false}), ColorDepth::palette);
    EXPECT_EQ(depth({"xterm-256color", "truecolor", "", false}), ColorDepth::direct);
    EXPECT_EQ(depth({"xterm-256color", "truecolor", "", true}), ColorDepth::none);
    EXPECT_EQ(depth({"xterm-256color", "24bit", "", true}, ColorChoice::always), ColorDepth::direct);
    EXPECT_EQ(depth({"xterm-256color", "truecolor", "", false}, ColorChoice::sixteen), ColorDepth::sixteen);
    EXPECT_EQ(depth({"", "truecolor", "", false}), ColorDepth::none);
    EXPECT_EQ(depth({"dumb", "", "", false}), ColorDepth::none);
    terminal.colors = 8;
    EXPECT_EQ(depth({"linux", "", "", false}), ColorDepth::eight);
    terminal.colors = 0;
    EXPECT_EQ(depth({"vt100", "", "", false}), ColorDepth::none);
    EXPECT_EQ(depth({"vt100", "", "", false}, ColorChoice::always), ColorDepth::eight);

    EXPECT_EQ(glyphsFor({"xterm", "", "", false}, true), Glyphs::solid);
    EXPECT_EQ(glyphsFor({"xterm-kitty", "", "", false}, true), Glyphs::sextant);
    EXPECT_EQ(glyphsFor({"linux", "", "", false}, true), Glyphs::block);
    EXPECT_EQ(glyphsFor({"xterm", "", "", false}, false), Glyphs::ascii);
    EXPECT_EQ(appearanceFrom("0;15"), Appearance::light);
    EXPECT_EQ(appearanceFrom("15;default;0"), Appearance::dark);
    EXPECT_EQ(appearanceFrom("15;default"), std::nullopt);
    EXPECT_EQ(appearanceFrom(""), std::nullopt);
}

TEST(Capabilities, TheFourBandsStayApartInSmallPalettes) {
    constexpr std::uint32_t green = 0x34C759;
    constexpr std::uint32_t yellow = 0xFFCC00;
    constexpr std::uint32_t orange = 0xFE9226;
    constexpr std::uint32_t red = 0xFF3B30;
    for (const ColorDepth depth : {ColorDepth::palette, ColorDepth::sixteen}) {
        const int colors[] = {nearestColor(green, depth), nearestColor(yellow, depth),
                              nearestColor(orange, depth), nearestColor(red, depth)};
        EXPECT_EQ(std::set<int>(std::begin(colors), std::end(colors)).size(), 4U);
    }
    EXPECT_EQ(nearestColor(green, ColorDepth::eight), 2);
    EXPECT_EQ(nearestColor(yellow, ColorDepth::eight), 3);
    EXPECT_EQ(nearestColor(red, ColorDepth::eight), 1);
    EXPECT_EQ(nearestColor(0xFFFFFF, ColorDepth::palette), 231);
    EXPECT_EQ(nearestColor(0x8A8A8A, ColorDepth::palette), 245);
}

} // namespace
} // namespace vantor::hosts::terminal
