// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Picture.hpp"

#include "SceneFixture.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <sstream>

namespace vantor::hosts::terminal {
namespace {

using tests::SceneFixture;

const std::map<std::string, Glyphs> glyphWords{{"braille", Glyphs::braille},
                                               {"sextant", Glyphs::sextant},
                                               {"octant", Glyphs::octant},
                                               {"block", Glyphs::block},
                                               {"ascii", Glyphs::ascii}};

/// What a heading of pictures.txt asks for, such as "80x24 braille expanded": the size, the characters, and
/// whether compact, mirrored or at the start of the animation.
struct Wanted {
    explicit Wanted(const std::string& heading) {
        std::istringstream words(heading);
        char by = 0;
        words >> size.width >> by >> size.height;
        for (std::string word; words >> word;) {
            isCompact = isCompact || word == "compact";
            isMoving = isMoving || word == "moving";
            look.isRightToLeft = look.isRightToLeft || word == "mirrored";
            const auto named = glyphWords.find(word);
            look.glyphs = named != glyphWords.end() ? named->second : look.glyphs;
        }
    }
    Size size;
    Look look;
    bool isCompact = false;
    bool isMoving = false;
};

Picture drawn(SceneFixture& fixture, const Wanted& wanted) {
    fixture.scene.isExpanded = !wanted.isCompact;
    const platform::Instant start = fixture.scene.sections[0].chart->animation().start;
    return drawPicture(fixture.scene, wanted.size, wanted.look,
                       wanted.isMoving ? start + std::chrono::milliseconds(500) : fixture.rest());
}

// The pictures were looked at before they were written down. After a change on purpose, look at the new ones:
// VANTOR_WRITE_PICTURES=FILE writes them.
TEST(Pictures, AreThoseWrittenDown) {
    std::ifstream file(VANTOR_TEST_DATA "/pictures.txt");
    std::ostringstream anew;
    std::string line;
    std::getline(file, line);
    int pictures = 0;
    while (file) {
        ASSERT_THAT(line, testing::StartsWith("== ")) << "a heading is expected";
        const std::string heading = line.substr(3);
        std::string expected;
        while (std::getline(file, line) && !line.starts_with("== ")) {
            expected += line + '\n';
        }
        SceneFixture fixture;
        std::string actual;
        for (const std::string& row : drawn(fixture, Wanted(heading)).grid.lines()) {
            actual += row + "|\n";
        }
        EXPECT_EQ(actual, expected) << heading;
        anew << "== " << heading << '\n' << actual;
        ++pictures;
    }
    EXPECT_GE(pictures, 20);
    if (const char* const name = std::getenv("VANTOR_WRITE_PICTURES")) {
        std::ofstream(name) << anew.str();
    }
}

TEST(Pictures, EverySizeHasOne) {
    SceneFixture fixture;
    fixture.scene.warning = "Storage: Not available";
    for (const Glyphs glyphs : {Glyphs::braille, Glyphs::ascii}) {
        for (const bool isExpanded : {true, false}) {
            fixture.scene.isExpanded = isExpanded;
            for (int width = 1; width <= 130; width += 1 + width / 12) {
                for (int height = 1; height <= 60; height += 1 + height / 8) {
                    const Picture picture =
                        drawPicture(fixture.scene, {width, height}, {glyphs}, fixture.rest());
                    std::size_t marks = 0;
                    for (const std::string& row : picture.grid.lines()) {
                        marks += row.size();
                    }
                    EXPECT_GT(marks, 0U) << width << "x" << height;
                }
            }
        }
    }
    const Picture huge = drawPicture(fixture.scene, {500, 200}, {}, fixture.rest());
    EXPECT_EQ(huge.grid.size(), (Size{500, 200}));
}

TEST(Pictures, OfAnotherMachineTheyAlwaysSayWhose) {
    SceneFixture fixture;
    fixture.scene.isElsewhere = true;
    for (int width = 40; width <= 130; width += 5) {
        for (int height = 8; height <= 60; ++height) {
            const Picture picture = drawPicture(fixture.scene, {width, height}, {}, fixture.rest());
            EXPECT_THAT(picture.grid.lines()[0], testing::HasSubstr("demo")) << width << "x" << height;
        }
    }
}

TEST(Pictures, ASectionThatCannotBeReadLooksLikeNoneThatIsSound) {
    SceneFixture fixture;
    Scene::Section& failed = fixture.scene.sections[1];
    failed.isKnown = false;
    for (Scene::Row& row : failed.rows) {
        row.figure.clear();
    }
    for (const Size size : {Size{80, 24}, Size{40, 9}, Size{20, 5}, Size{60, 1}, Size{14, 1}, Size{3, 1}}) {
        std::string all;
        for (const std::string& row :
             drawPicture(fixture.scene, size, {Glyphs::ascii}, fixture.rest()).grid.lines()) {
            all += row + '\n';
        }
        EXPECT_THAT(all, testing::Not(testing::HasSubstr("68%"))) << all;
        EXPECT_THAT(all, testing::Not(testing::HasSubstr(" 0%"))) << all;
        EXPECT_THAT(all, testing::HasSubstr("-")) << all;
    }
}

TEST(Pictures, TheLastFiguresOfASilentMachineStayAndArePale) {
    SceneFixture fixture;
    const Size size{80, 24};
    const Look look;
    const Picture sound = drawPicture(fixture.scene, size, look, fixture.rest());
    fixture.scene.isPale = true;
    Picture pale = drawPicture(fixture.scene, size, look, {});
    EXPECT_EQ(pale.grid.lines(), sound.grid.lines()) << "settled at once";
    const auto colors = [&size](const Picture& picture) {
        std::set<std::uint32_t> found;
        for (int row = 0; row < size.height - 4; ++row) { // the keys stay as they are
            for (int column = 0; column < size.width; ++column) {
                found.insert(picture.grid.at(column, row).ink.rgb);
            }
        }
        return found.size();
    };
    EXPECT_GT(colors(sound), 2u);
    EXPECT_EQ(colors(pale), 1u);
    const Grid drawn = pale.grid;
    stepPicture(pale, fixture.scene, look, {}, {});
    EXPECT_EQ(pale.grid, drawn);
    fixture.scene.isPale = false;
    EXPECT_EQ(drawPicture(fixture.scene, size, look, fixture.rest(), pale).grid, sound.grid) << "back again";
}

TEST(Pictures, CustomColoursOddFiguresAndNoFiguresAreDrawn) {
    for (const double progress : {0.0, 1.0, 7.5, std::numeric_limits<double>::quiet_NaN()}) {
        SceneFixture fixture;
        fixture.scene.sections[1].chart = SceneFixture::chart("Used", progress);
        fixture.scene.lines[0].rows[0].figure.clear();
        for (const Size size : {Size{80, 24}, Size{30, 3}, Size{2, 1}}) {
            EXPECT_EQ(drawPicture(fixture.scene, size, {}, fixture.rest()).grid.size(), size);
        }
    }
}

TEST(Pictures, WideAndRightToLeftTextsKeepTheirColumns) {
    SceneFixture fixture;
    Grid grid({8, 2});
    EXPECT_EQ(grid.write(5, 0, "\u4F7F\u7528", {}), 9) << "the second half falls outside";
    EXPECT_EQ(grid.lines()[0], "     \u4F7F");
    grid.put(6, 0, U'x', {});
    EXPECT_EQ(grid.lines()[0], "      x") << "half an ideograph is none";
    grid.write(0, 1, "\u0646\u0651\u0635", {});
    EXPECT_EQ(grid.at(0, 1).mark, U'\u0651');
    EXPECT_EQ(grid.at(1, 1).mark, U'\u200E') << "closes the text for terminals that reorder";
    EXPECT_EQ(clippedTo(U"\u4F7F\u7528\u4E2D", 5, U'\u2026'), U"\u4F7F\u7528\u2026");
    EXPECT_EQ(clippedTo(U"\u4F7F\u7528\u4E2D", 6, U'\u2026'), U"\u4F7F\u7528\u4E2D");
}

TEST(Pictures, NothingInATextSteersTheTerminal) {
    SceneFixture fixture;
    fixture.scene.notice = "\033]2;owned\a \x9B"
                           "2J \u202E";
    fixture.scene.sections[0].rows[0] = {"\033[31m", "\r\n\b\x7F"};
    const Picture picture = drawPicture(fixture.scene, {80, 24}, {}, fixture.rest());
    for (int row = 0; row < 24; ++row) {
        for (int column = 0; column < 80; ++column) {
            const char32_t c = picture.grid.at(column, row).character;
            EXPECT_FALSE((c > 0 && c < 0x20) || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E));
        }
    }
}

TEST(Pictures, AStepIsDueWhenAChartsEndHasMovedByADot) {
    Look look;
    look.glyphs = Glyphs::braille;
    for (const Size size : {Size{80, 24}, Size{120, 10}, Size{60, 4}}) {
        SceneFixture fixture;
        platform::Instant now = fixture.scene.sections[2].chart->animation().start;
        Picture picture = drawPicture(fixture.scene, size, look, now);
        Grid before = picture.grid;
        int steps = 0;
        int changes = 0;
        while (const std::optional<platform::Instant> next = nextStep(fixture.scene, picture, now)) {
            ASSERT_GT(*next, now);
            const Picture last = picture;
            stepPicture(picture, fixture.scene, look, now, *next);
            now = *next;
            ASSERT_EQ(picture.grid, drawPicture(fixture.scene, size, look, now).grid) << "step " << steps;
            ASSERT_EQ(picture.grid, drawPicture(fixture.scene, size, look, now, last).grid);
            changes += picture.grid != before ? 1 : 0;
            before = picture.grid;
            ++steps;
        }
        // The fullest of three charts passes 84 percent of its dots; each makes 20 steps at most.
        EXPECT_GE(steps, std::min(static_cast<int>(0.84 * picture.stepsPerUnit), 20));
        EXPECT_LT(steps, 61);
        EXPECT_GT(changes, steps * 7 / 10) << "hardly a step is without a new dot";
        EXPECT_EQ(before, drawPicture(fixture.scene, size, look, fixture.rest()).grid);
        look.background = look.background ? std::nullopt : std::optional(0x002B36U);
        EXPECT_EQ(drawPicture(fixture.scene, size, look, now, picture).grid,
                  drawPicture(fixture.scene, size, look, now).grid);
    }
}

double luminanceOf(std::uint32_t rgb) {
    const auto linear = [rgb](unsigned shift) { return std::pow((rgb >> shift & 0xFF) / 255.0, 2.2); };
    return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

TEST(Pictures, InksStandOutFromTheBackgroundsOfUsualThemes) {
    for (const std::uint32_t ground : {0x000000U, 0x282828U, 0x002B36U, 0xFFFFFFU, 0xFDF6E3U, 0xEFF1F5U}) {
        const double below = luminanceOf(ground) + 0.05;
        const auto contrast = [&](const platform::UIColor& color, double opacity, Contrast wanted) {
            Look look;
            look.background = ground;
            look.appearance = below > 0.5 ? platform::Appearance::light : platform::Appearance::dark;
            const double above = luminanceOf(inkOf(color, opacity, look, wanted).rgb) + 0.05;
            return std::max(above, below) / std::min(above, below);
        };
        EXPECT_GT(contrast(platform::UIColor::secondaryLabelColor(), 1, Contrast::text), 2.9) << ground;
        EXPECT_GT(contrast(platform::UIColor::colorWithWhite(0.5, 1), 0.3, Contrast::hairline), 1.9)
            << ground;
        for (const auto& level :
             {platform::UIColor::systemGreenColor(), platform::UIColor::systemYellowColor(),
              platform::UIColor::systemRedColor()}) {
            EXPECT_GT(contrast(level, 1, Contrast::stroke), 1.45) << ground;
        }
    }
}

TEST(Pictures, ClicksFindRingsAndKeys) {
    SceneFixture fixture;
    const Picture picture = drawPicture(fixture.scene, {80, 24}, {}, fixture.rest());
    EXPECT_EQ(picture.actionAt(14, 8), Action(platform::Source::memory));
    EXPECT_EQ(picture.actionAt(40, 8), Action(platform::Source::storage));
    EXPECT_EQ(picture.actionAt(66, 8), Action(platform::Source::processor));
    const std::string keys = picture.grid.lines()[23];
    EXPECT_EQ(picture.actionAt(static_cast<int>(keys.find("Quit")), 23), Action(HostAction::quit));
    EXPECT_EQ(picture.actionAt(0, 0), std::nullopt);
}

} // namespace
} // namespace vantor::hosts::terminal
