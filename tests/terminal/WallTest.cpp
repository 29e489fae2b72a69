// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/Wall.hpp"

#include "hosts/terminal/screen/ScreenWriter.hpp"
#include "hosts/terminal/wall/WallWords.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sstream>

namespace vantor::hosts::terminal {
namespace {

using fleet::Band;
using fleet::WallMove;
using platform::FleetFigure;
using platform::FleetMachine;
using platform::FleetSnapshot;
using std::chrono::seconds;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr seconds now{1000};
using Answer = Wall::Answer;

/// A wall of made-up machines: of a hundred one is down, two are red, three orange, one is stale, one
/// unknown.
struct Stage {
    explicit Stage(std::size_t count) {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
        std::setlocale(LC_CTYPE, "C.UTF-8");
        snapshot.sources.push_back({"prod", seconds(15), seconds(60), now - seconds(9), "", false});
        for (std::size_t i = 0; i < count; ++i) {
            snapshot.machines.push_back(machine(i));
        }
        show();
    }

    static FleetMachine machine(std::size_t i) {
        constexpr const char* roles[]{"db", "web", "nas"};
        std::string number = std::to_string(10000 + i).substr(1);
        FleetMachine made;
        made.name = roles[i % 3] + number;
        made.key = std::move(number);
        made.labels = std::make_shared<const std::vector<std::pair<std::string, std::string>>>(
            std::vector<std::pair<std::string, std::string>>{{"role", roles[i % 3]}});
        made.volume = "/srv";
        made.taken = now - (i % 100 == 7 ? seconds(300) : seconds(9));
        if (i % 100 != 8) {
            const auto used = [&](std::size_t by) { return 0.1 + 0.01 * static_cast<double>(i * by % 55); };
            const double worst = i % 100 < 3 ? 0.97 : i % 100 < 6 ? 0.75 : 0.3;
            made.figures = {std::max(worst, used(7)), used(11), used(13), 1.2e6, 860.0};
        }
        if (i % 100 == 6) {
            made.downSince = std::chrono::system_clock::time_point(seconds(50580));
            made.problem = "connection refused";
        }
        return made;
    }

    void show() { wall.table().take(std::make_shared<const FleetSnapshot>(snapshot), now); }
    Grid draw(Size size = {80, 24}) { return wall.draw(size, look, now); }
    Answer keys(std::u32string_view pressed) {
        Answer answer = Answer::nothing;
        for (const char32_t key : pressed) {
            answer = wall.press(key, now);
        }
        return answer;
    }

    platform::SimulatedViewer viewer;
    platform::Current<platform::Viewer> scope{viewer};
    FleetSnapshot snapshot;
    Wall wall{"prod"};
    WallLook look;
};

std::string textOf(const Grid& grid) {
    std::string text;
    for (const std::string& line : grid.lines()) {
        text += line + "|\n";
    }
    return text;
}

/// FNV-1a, so that a picture of ten thousand machines need not be written down whole.
std::string digestOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    }
    return std::to_string(hash) + "|\n";
}

/// What a heading of walls.txt asks for: how many machines, the size, and keys, as in "41 80x24 grouped ++".
std::string drawnAs(const std::string& heading) {
    std::istringstream words(heading);
    std::size_t count = 0;
    Size size;
    char by = 0;
    words >> count >> size.width >> by >> size.height;
    Stage stage(count);
    bool isDigest = false;
    stage.draw(size);
    for (std::string word; words >> word;) {
        if (word == "grouped") {
            stage.wall.table().groupBy("role", now);
        } else if (word == "ascii" || word == "block") {
            stage.look.look.glyphs = word == "ascii" ? Glyphs::ascii : Glyphs::block;
        } else if (word == "plain") {
            stage.look.colors = WallColors::none;
        } else if (word == "mirrored") {
            stage.look.look.isRightToLeft = true;
        } else if (word == "digest") {
            isDigest = true;
        } else if (word == "folded") { // all but the last
            stage.wall.table().fold("db", true);
            stage.wall.table().fold("nas", true);
        } else {
            stage.draw(size);
            stage.keys(std::u32string(word.begin(), word.end()));
        }
    }
    const std::string text = textOf(stage.draw(size));
    return isDigest ? digestOf(text) : text;
}

// The walls were looked at before they were written down. After a change on purpose, look at the new ones:
// VANTOR_WRITE_WALLS=FILE writes them.
TEST(Walls, AreThoseWrittenDown) {
    std::ifstream file(VANTOR_TEST_DATA "/walls.txt");
    std::ostringstream anew;
    std::string line;
    std::getline(file, line);
    int walls = 0;
    while (file) {
        ASSERT_THAT(line, StartsWith("== ")) << "a heading is expected";
        const std::string heading = line.substr(3);
        std::string expected;
        while (std::getline(file, line) && !line.starts_with("== ")) {
            expected += line + '\n';
        }
        const std::string actual = drawnAs(heading);
        EXPECT_EQ(actual, expected) << heading;
        anew << "== " << heading << '\n' << actual;
        ++walls;
    }
    EXPECT_GE(walls, 8);
    if (const char* const name = std::getenv("VANTOR_WRITE_WALLS")) {
        std::ofstream(name) << anew.str();
    }
}

TEST(Wall, TwoMachinesShareACellInTheirColours) {
    Stage stage(1000);
    const WallInks inks(stage.look);
    const Grid grid = stage.draw();
    ASSERT_EQ(stage.wall.layout().form.density, WallDensity::square);
    const int top = stage.wall.layout().top;
    const Cell& sign = grid.at(1, top); // of ten that are down, above machines of the second row
    EXPECT_EQ(sign.character, U'\u00D7');
    EXPECT_TRUE(sign.ink.hasGround);
    const Cell& red = grid.at(12, top);
    EXPECT_EQ(red.character, U'\u2580');
    EXPECT_EQ(red.ink.rgb, inks.band(Band::red).rgb);
    EXPECT_NE(inks.band(Band::orange).rgb, inks.band(Band::yellow).rgb);
    EXPECT_EQ(grid.at(0, top).ink, [&] {
        Ink chosen;
        chosen.ground = sign.ink.ground;
        chosen.hasGround = true;
        return chosen;
    }()) << "the chosen one is in the terminal's own foreground";
}

TEST(Wall, ColourFollowsTheFigureThatIsSortedBy) {
    Stage stage(1);
    fleet::FleetRow row;
    row.machine = &stage.snapshot.machines.front(); // memory 0.97, storage and processor low
    row.band = Band::red;
    EXPECT_EQ(figureBand(row, FleetFigure::storage, fleet::FleetOrder::worst), Band::green);
    EXPECT_EQ(figureBand(row, FleetFigure::memory, fleet::FleetOrder::memory), Band::red);
    EXPECT_EQ(figureBand(row, FleetFigure::storage, fleet::FleetOrder::memory), Band::stale) << "grey";
    row.band = Band::stale;
    EXPECT_EQ(figureBand(row, FleetFigure::memory, fleet::FleetOrder::worst), Band::stale);
    const WallInks few({{}, WallColors::few});
    EXPECT_EQ(few.band(Band::green), few.band(Band::yellow));
    EXPECT_NE(few.band(Band::orange), few.band(Band::yellow));
    Look dark;
    dark.appearance = platform::Appearance::dark;
    const WallInks palette({dark, WallColors::palette});
    EXPECT_NE(nearestColor(palette.band(Band::green).rgb, ColorDepth::palette),
              nearestColor(WallInks({dark, WallColors::many}).band(Band::green).rgb, ColorDepth::palette))
        << "which is a grey";
}

TEST(Wall, OnlyWhatChangedIsWritten) {
    Stage stage(1000);
    ::setenv("TERM", "xterm-256color", 1);
    const Terminfo terminal = Terminfo::fromEnvironment();
    ScreenWriter writer(terminal, ColorDepth::direct);
    static_cast<void>(writer.update(stage.draw()));
    stage.show();
    EXPECT_EQ(writer.update(stage.draw()), "") << "the same figures again are free";
    stage.snapshot.machines.back().figures[0] = 0.99;
    stage.show();
    const std::string bytes = writer.update(stage.draw());
    EXPECT_THAT(bytes, HasSubstr("\033[48;2;")) << "or the upper half's colour";
    EXPECT_LT(bytes.size(), 200U) << "one square, and the counts";
}

TEST(Wall, TheCursorStaysOnItsMachineAndTheViewFollows) {
    Stage stage(300);
    EXPECT_EQ(stage.draw().at(0, 2).character, U'\u2580') << "before anybody went anywhere: the first";
    stage.keys(U"+");
    EXPECT_EQ(stage.wall.layout().form.density, WallDensity::cell) << "what a user chose stays";
    stage.wall.move(WallMove::last);
    const std::string last = stage.wall.chosen()->name;
    EXPECT_THAT(textOf(stage.draw()), HasSubstr(last + " "));
    EXPECT_GT(stage.wall.topLine(), 0);
    stage.keys(U"n");
    EXPECT_EQ(stage.wall.chosen()->name, last) << "wherever it is now";
    EXPECT_THAT(textOf(stage.draw()), HasSubstr(last));
    stage.wall.move(WallMove::first);
    EXPECT_EQ(stage.wall.topLine(), 0);
    stage.wall.turnWheel(false);
    EXPECT_EQ(stage.wall.topLine(), 6) << "the wheel moves the view alone";
    stage.draw({20, 5});
    stage.draw({1, 1});
    stage.draw({0, 0});
}

TEST(Wall, AFilterIsTypedAndKeptOrCleared) {
    Stage stage(30);
    stage.draw();
    EXPECT_EQ(stage.keys(U"/web\u00E4\177000q"), Answer::changed) << "letters are no keys meanwhile";
    EXPECT_EQ(stage.wall.table().filterText(), "web000q");
    stage.keys(U"\177\r");
    EXPECT_EQ(stage.wall.table().rows().size(), 3U) << "web0001, web0004 and web0007";
    EXPECT_THAT(stage.draw().lines(), Contains(HasSubstr("/ web000  Esc all machines")));
    EXPECT_EQ(stage.keys(U"\033"), Answer::changed);
    EXPECT_EQ(stage.wall.table().rows().size(), 30U);
    EXPECT_EQ(stage.keys(U"\033"), Answer::nothing);
    stage.keys(U"/nowhere\r");
    EXPECT_THAT(stage.draw().lines(), Contains(HasSubstr("No machine matches")));
    EXPECT_EQ(stage.keys(U"\r"), Answer::nothing) << "there is nothing to open";
    EXPECT_EQ(stage.keys(U"Q"), Answer::quit);
}

TEST(Wall, GroupsFoldByKeyAndClick) {
    Stage stage(30);
    stage.wall.table().groupBy("role", now);
    stage.draw();
    EXPECT_EQ(stage.keys(U" "), Answer::changed);
    const int top = stage.wall.layout().top;
    EXPECT_THAT(stage.draw().lines()[static_cast<std::size_t>(top)], StartsWith("\u25B8 "));
    EXPECT_EQ(stage.wall.move(WallMove::down), Answer::changed);
    stage.wall.move(WallMove::up);
    EXPECT_EQ(stage.keys(U"\r"), Answer::changed) << "on a folded group it unfolds";
    EXPECT_THAT(stage.draw().lines()[static_cast<std::size_t>(top)], StartsWith("\u25BE "));
    EXPECT_EQ(stage.wall.click(3, top, now), Answer::changed);
    EXPECT_THAT(stage.draw().lines()[static_cast<std::size_t>(stage.wall.layout().top)],
                StartsWith("\u25B8 "));
}

TEST(Wall, AClickChoosesAndASecondOneOpens) {
    Stage stage(30);
    stage.draw();
    ASSERT_EQ(stage.wall.layout().form.density, WallDensity::cell);
    const int row = stage.wall.layout().top + 2;
    EXPECT_EQ(stage.wall.click(20, row, now), Answer::changed);
    const std::string chosen = stage.wall.chosen()->name;
    EXPECT_THAT(stage.draw().lines()[static_cast<std::size_t>(row)], HasSubstr(chosen));
    EXPECT_THAT(stage.draw().lines()[22], HasSubstr(chosen + "  RAM")) << "what is under the cursor is told";
    EXPECT_EQ(stage.wall.click(20, row, now), Answer::open);
    EXPECT_EQ(stage.wall.click(79, 0, now), Answer::nothing);
    const std::string keys = stage.draw().lines()[23];
    const auto quit = static_cast<int>(keys.find("q Quit"));
    EXPECT_EQ(stage.wall.click(quit + 3, 23, now), Answer::quit) << "words are keys";
}

TEST(Wall, WordsAreCutByTheirWidthAndBrokenBetweenThem) {
    Stage stage(9);
    stage.snapshot.machines[0].name =
        "\u6F22\u5B57\u6F22\u5B57\u6F22\u5B57\u6F22\u5B57\u6F22\u5B57\u6F22\u5B57";
    stage.show();
    EXPECT_THAT(textOf(stage.draw()), HasSubstr("\u5B57\u6F22\u2026   nas0002"));
    EXPECT_THAT(wrapped("down since 14:03: connection refused", 12, 3),
                testing::ElementsAre("down since", "14:03:", "connection refused"));
    EXPECT_THAT(wrapped("averyverylongword", 5, 2), testing::ElementsAre("averyverylongword"));
}

} // namespace
} // namespace vantor::hosts::terminal
