// SPDX-License-Identifier: MIT
#include "TestTree.hpp"
#include "hosts/common/TargetFiles.hpp"
#include "hosts/common/TargetList.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace vantor::tests {
namespace {

using hosts::common::TargetFiles;
using hosts::common::targetsFrom;

TEST(Targets, LabelsSayHowToAskAndHowToGroup) {
    std::string problem;
    std::string doubt;
    const auto targets = targetsFrom(R"([{"targets":["web01:9100","me:hush@x","db01"],"labels":
        {"dc":"a\u0007","__scheme__":"https","__metrics_path__":"/n","__param_m":"a b","__meta_x":"y"}},
        {"targets":["nas"]}])",
                                     problem, doubt);
    ASSERT_TRUE(targets) << problem;
    ASSERT_EQ(targets->size(), 3u);
    EXPECT_EQ(targets->at(0).address.url, "https://web01:9100/n?m=a%20b");
    EXPECT_EQ(targets->at(1).address.name, "db01");
    ASSERT_EQ(targets->at(0).labels->size(), 1u);
    EXPECT_EQ(targets->at(0).labels->front().first, "dc");
    EXPECT_EQ(targets->at(0).labels->front().second.find('\a'), std::string::npos);
    EXPECT_EQ(targets->at(2).address.url, "http://nas:9100/metrics");
    EXPECT_FALSE(doubt.empty());
    EXPECT_EQ(doubt.find("hush"), std::string::npos);
}

TEST(Targets, WhatIsNoListIsNamed) {
    std::string many = "[{\"targets\":[\"a\"";
    for (std::size_t i = 0; i < hosts::common::mostTargets; ++i) {
        many += ",\"a\"";
    }
    for (const std::string& text :
         {std::string(), std::string("{}"), std::string("[1]"), std::string(R"([{"targets":"a"}])"),
          std::string(R"([{"targets":["a"],"labels":{"b":1}}])"),
          std::string(R"([{"targets":["a"],"labels":{"__scheme__":"file"}}])"), many + "]}]"}) {
        std::string problem;
        std::string doubt;
        EXPECT_FALSE(targetsFrom(text, problem, doubt)) << text.substr(0, 60);
        EXPECT_FALSE(problem.empty());
    }
}

TEST(Targets, AFileThatIsReplacedIsTakenUpAndABrokenOneKeepsWhatItHeld) {
    TestTree tree;
    const auto replace = [&tree](const std::string& name, const std::string& text) {
        tree.write("new", text);
        std::filesystem::rename(tree.root() / "new", tree.root() / name);
    };
    replace("a.json", R"([{"targets":["web01"]}])");
    TargetFiles files({(tree.root() / "*.json").string()});
    files.read();
    EXPECT_EQ(files.targets().size(), 1u);
    EXPECT_EQ(files.problem(), "");
    EXPECT_FALSE(files.mayHaveChanged());

    replace("a.json", R"([{"targets":["web01","web02"]}])");
    replace("b.json", R"([{"targets":["db01"]}])");
    EXPECT_TRUE(files.mayHaveChanged());
    files.read();
    EXPECT_EQ(files.targets().size(), 3u);

    replace("a.json", "[{");
    EXPECT_TRUE(files.mayHaveChanged());
    files.read();
    EXPECT_EQ(files.targets().size(), 3u);
    EXPECT_NE(files.problem().find("a.json: "), std::string::npos);

    std::filesystem::remove(tree.root() / "a.json");
    files.read();
    EXPECT_EQ(files.targets().size(), 1u);
    EXPECT_EQ(files.problem(), "");

    TargetFiles gone({(tree.root() / "gone.json").string()});
    gone.read();
    EXPECT_FALSE(gone.isKnown());
    EXPECT_FALSE(gone.problem().empty());
}

} // namespace
} // namespace vantor::tests
