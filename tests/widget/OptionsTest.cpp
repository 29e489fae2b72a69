// SPDX-License-Identifier: MIT
#include "hosts/widget/Options.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace vantor::hosts::widget {

namespace {

std::variant<Options, int> read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "vantor-widget");
    return readOptions(static_cast<int>(arguments.size()), arguments.data());
}

TEST(Options, AreReadWhateverTheLocale) {
    const auto result = read({"--snapshot", "a.svg", "--compact", "--appearance", "dark", "--scale", "1.5"});
    const auto& options = std::get<Options>(result);
    EXPECT_EQ(options.snapshot, "a.svg");
    EXPECT_EQ(options.expanded, false);
    EXPECT_EQ(options.appearance, AppearanceChoice::dark);
    EXPECT_EQ(options.scale, 1.5);
    EXPECT_EQ(std::get<Options>(read({})).expanded, std::nullopt);
}

TEST(Options, ThatCannotBeUsedEndWithOneLineAndTwo) {
    const std::vector<std::vector<const char*>> wrong{
        {"--snapshot", "a.jpg"},
        {"--snapshot"},
        {"--snapshot", "a.png", "--scale", "0"},
        {"--snapshot", "a.png", "--scale", "nan"},
        {"--snapshot", "a.png", "--scale", "2x"},
        {"--scale", "2"}, // of nothing
        {"--compact", "--expanded"},
        {"--on-top", "--on-desktop"},
        {"--appearance", "purple"},
        {"--autostart", "maybe"},
        {"--no-such-option"},
        {"--demo", "--node", "web01"},
        {"--demo-fleet", "0"},
        {"--demo-fleet", "41", "--node", "web01"},
        {"--nodes", ""},
        {"--select", "job=\"node\""}, // of which server
        {"--node", "web01", "--machine", "db07"},
        {"--node", "web01", "--sort", "cpu"}, // one is in order
        {"--prometheus", "http://prom:9090", "--sort", "colour"},
        {"--every", "2"},
        {"stray"},
        {"--\033[2J"},
    };
    for (const auto& arguments : wrong) {
        ::testing::internal::CaptureStderr();
        const auto result = read(arguments);
        const std::string line = ::testing::internal::GetCapturedStderr();
        ASSERT_TRUE(std::holds_alternative<int>(result)) << arguments.front();
        EXPECT_EQ(std::get<int>(result), 2) << arguments.front();
        EXPECT_TRUE(line.starts_with("vantor-widget: ")) << line;
        EXPECT_EQ(std::ranges::count(line, '\n'), 1) << line;
        EXPECT_EQ(line.find('\033'), std::string::npos);
    }
}

/// One other machine is the widget, several are a wall; either comes back from the words that start it again.
TEST(Options, NameOtherMachines) {
    const auto one = std::get<Options>(read({"--node", "web01", "--every", "2.5"}));
    EXPECT_FALSE(one.fleet.isWall());
    EXPECT_EQ(one.node.address, "web01");
    EXPECT_EQ(one.node.every, 2.5);
    const std::vector<const char*> words{"--node", "web01",  "--node",  "db07",    "--fleet", "--group-by",
                                         "dc",     "--sort", "storage", "--every", "10"};
    const auto wall = std::get<Options>(read(words));
    EXPECT_TRUE(wall.fleet.isWall());
    EXPECT_FALSE(wall.node.isOther());
    EXPECT_EQ(wall.fleet.nodes, (std::vector<std::string>{"web01", "db07"}));
    EXPECT_TRUE(wall.fleet.listed);
    EXPECT_EQ(windowWords(wall), std::vector<std::string>(words.begin(), words.end()));
    EXPECT_EQ(optionsFromWords(windowWords(wall))->fleet.groupBy, "dc");
    EXPECT_EQ(std::get<Options>(read({"--fleet", "home", "--sort", "ram"})).fleet.list, "home");
}

TEST(Options, HelpAndVersionEndWell) {
    for (const char* option : {"--help", "--version"}) {
        ::testing::internal::CaptureStdout();
        const auto result = read({option});
        EXPECT_NE(::testing::internal::GetCapturedStdout().find("vantor-widget"), std::string::npos);
        EXPECT_EQ(std::get<int>(result), 0);
    }
}

} // namespace

} // namespace vantor::hosts::widget
