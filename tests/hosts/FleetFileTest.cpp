// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

#include "TestTree.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace vantor::tests {
namespace {

using hosts::common::FleetListed;
using platform::remote::Access;
using std::filesystem::perms;

class FleetFile : public testing::Test {
protected:
    std::optional<std::vector<FleetListed>> read(const std::string& text) {
        notes.clear();
        problem.clear();
        return hosts::common::fleetSources(text, tree.root().string(), problem, notes);
    }
    /// What the only source's servers want to know; null where that cannot be had.
    std::shared_ptr<const Access> with(const std::string& config) {
        const auto sources = read(R"({"sources":[{"nodes":["nas"],"http_config":{)" + config + "}}]}");
        const auto access =
            sources ? hosts::common::accessOf(sources->front(), tree.root().string(), problem, notes)
                    : std::nullopt;
        return access.value_or(nullptr);
    }
    void write(const std::string& name, const std::string& text, perms mode = perms(0600)) {
        tree.write(name, text);
        std::filesystem::permissions(tree.root() / name, mode);
    }

    TestTree tree;
    std::string problem;
    std::vector<std::string> notes;
};

TEST_F(FleetFile, HasSourcesOfEachKind) {
    const auto sources = read(R"({"sources":[
        {"name":"prod","prometheus":"https://t/prom","select":"env=\"prod\"","identity":["cluster","instance"],
         "every":60,"queries":{"processor":"mine","disk":"?"}},
        {"name":"home","nodes":["https://web01:9100","nas"],"every":2.5,"colour":1,
         "http_config":{"basic_auth":{"password_file":"gone"}}},
        {"file_sd":["/etc/t/*.json","t.json"],"colour":2}]})");
    ASSERT_TRUE(sources) << problem;
    const FleetListed& prod = sources->at(0);
    EXPECT_EQ(prod.prometheus->url + prod.prometheus->select, "https://t/promenv=\"prod\"");
    EXPECT_EQ(prod.prometheus->identity, (std::vector<std::string>{"cluster", "instance"}));
    EXPECT_EQ(prod.prometheus->queries.processor + prod.prometheus->queries.memory, "mine");
    EXPECT_EQ(prod.every, 60);
    const FleetListed& home = sources->at(1);
    EXPECT_EQ(home.node("web01")->url, "https://web01:9100/metrics");
    EXPECT_EQ(home.node("http://nas:9100"), &home.nodes[1]);
    EXPECT_EQ(home.node("db"), nullptr);
    EXPECT_EQ(home.every, 2.5);
    EXPECT_EQ(sources->at(2).files,
              (std::vector<std::string>{"/etc/t/*.json", (tree.root() / "t.json").string()}));
    EXPECT_EQ(notes, (std::vector<std::string>{"\"disk\" is not known", "\"colour\" is not known"}));
}

TEST_F(FleetFile, SaysWhatAServerWantsToKnow) {
    write("pass", "secret\n");
    write("key.pem", "x");
    const auto access = with(R"("basic_auth":{"username":"me","password_file":"pass"},
        "tls_config":{"ca_file":"/etc/ca.pem","cert_file":"c.pem","key_file":"key.pem","min_version":"TLS12"},
        "http_headers":{"X-Scope-OrgID":{"values":["ops"]}})");
    ASSERT_TRUE(access) << problem;
    EXPECT_EQ(access->user + access->password, "mesecret");
    EXPECT_EQ(access->authority, "/etc/ca.pem");
    EXPECT_EQ(access->key, (tree.root() / "key.pem").string());
    EXPECT_EQ(access->headers, std::vector<std::string>{"X-Scope-OrgID: ops"});
    EXPECT_EQ(notes, (std::vector<std::string>{"\"min_version\" is not known"}));
}

TEST_F(FleetFile, ASecretThatOthersMayReadOrThatIsNoLineIsRefusedAndNeverTold) {
    for (const perms mode : {perms(0640), perms(0604), perms(0620)}) {
        write("token", "hush", mode);
        EXPECT_FALSE(with(R"("authorization":{"credentials_file":"token"})"));
        EXPECT_NE(problem.find("others may read"), std::string::npos);
    }
    write("token", "hush\nX-Evil: 1\n");
    EXPECT_FALSE(with(R"("authorization":{"credentials_file":"token"})"));
    EXPECT_FALSE(with(R"("http_headers":{"A":{"files":["token"]}})"));
    EXPECT_EQ(problem.find("hush"), std::string::npos);
    EXPECT_FALSE(with(R"("authorization":{"credentials_file":"gone"})"));
    EXPECT_FALSE(with(R"("basic_auth":{"username":"me","password":"hush"})"));
    EXPECT_FALSE(with(R"("authorization":{"credentials":"hush"})"));
    EXPECT_EQ(problem.find("hush"), std::string::npos);
    write("key.pem", "x", perms(0644));
    EXPECT_FALSE(with(R"("tls_config":{"key_file":"key.pem"})"));
}

TEST_F(FleetFile, WhatIsNoListIsNamed) {
    for (const char* const text :
         {"", "[]", "{", R"({"sources":1})", R"({"sources":[1]})", R"({"sources":[{"nodes":1}]})",
          R"({"sources":[{"nodes":[1]}]})", R"({"sources":[{"nodes":["a b"]}]})",
          R"({"sources":[{"nodes":["nas"],"every":0}]})",
          R"({"sources":[{"nodes":["nas"],"http_config":1}]})", R"({"sources":[]})", R"({"sources":[{}]})",
          R"({"sources":[{"prometheus":7}]})", R"({"sources":[{"prometheus":"p","identity":"x"}]})",
          R"({"sources":[{"nodes":["me:hush@nas"]}]})"}) {
        EXPECT_FALSE(read(text)) << text;
        EXPECT_FALSE(problem.empty()) << text;
        EXPECT_EQ(problem.find("hush"), std::string::npos);
    }
    EXPECT_FALSE(with(R"("http_headers":{"A:b":{"values":["x"]}})"));
    EXPECT_FALSE(with(R"("http_headers":{"A":{"values":["x\r\nB: 1"]}})"));
    EXPECT_FALSE(with(R"("http_headers":{"A":{"values":1}})"));
    EXPECT_FALSE(with(R"("basic_auth":{"username":7})"));
    EXPECT_FALSE(with(R"("basic_auth":{"username":"me"},"authorization":{})")) << "one would go unsaid";
}

} // namespace
} // namespace vantor::tests
