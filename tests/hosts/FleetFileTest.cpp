// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

#include "TestTree.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace vantor::tests {
namespace {

using hosts::common::FleetNode;
using std::filesystem::perms;

class FleetFile : public testing::Test {
protected:
    std::optional<FleetNode> find(const std::string& text, const std::string& name = "nas") {
        notes.clear();
        problem.clear();
        return hosts::common::fleetNode(text, tree.root().string(), name, problem, notes);
    }
    /// With one node whose http_config this is.
    std::optional<FleetNode> with(const std::string& config) {
        return find(R"({"sources":[{"nodes":["nas"],"http_config":{)" + config + "}}]}");
    }
    void write(const std::string& name, const std::string& text, perms mode = perms(0600)) {
        tree.write(name, text);
        std::filesystem::permissions(tree.root() / name, mode);
    }

    TestTree tree;
    std::string problem;
    std::vector<std::string> notes;
};

TEST_F(FleetFile, FindsAMachineWithWhatItsServerWantsToKnow) {
    write("pass", "secret\n");
    write("key.pem", "x");
    const auto node =
        find(R"({"sources":[{"nodes":["db"],"http_config":{"basic_auth":{"password_file":"gone"}}},
        {"name":"home","nodes":["https://web01:9100","nas"],"every":2.5,"colour":1,"http_config":{
        "basic_auth":{"username":"me","password_file":"pass"},
        "tls_config":{"ca_file":"/etc/ca.pem","cert_file":"c.pem","key_file":"key.pem","min_version":"TLS12"},
        "http_headers":{"X-Scope-OrgID":{"values":["ops"]}}}}]})",
             "web01");
    ASSERT_TRUE(node) << problem;
    EXPECT_EQ(node->address.url, "https://web01:9100/metrics");
    EXPECT_EQ(node->every, 2.5);
    EXPECT_EQ(node->access->user + node->access->password, "mesecret");
    EXPECT_EQ(node->access->authority, "/etc/ca.pem");
    EXPECT_EQ(node->access->key, (tree.root() / "key.pem").string());
    EXPECT_EQ(node->access->headers, std::vector<std::string>{"X-Scope-OrgID: ops"});
    EXPECT_EQ(notes, (std::vector<std::string>{"\"min_version\" is not known", "\"colour\" is not known"}));
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
          R"({"sources":[{"nodes":["nas"],"http_config":1}]})", R"({"sources":[]})"}) {
        EXPECT_FALSE(find(text)) << text;
        EXPECT_FALSE(problem.empty()) << text;
    }
    EXPECT_FALSE(with(R"("http_headers":{"A:b":{"values":["x"]}})"));
    EXPECT_FALSE(with(R"("http_headers":{"A":{"values":["x\r\nB: 1"]}})"));
    EXPECT_FALSE(with(R"("http_headers":{"A":{"values":1}})"));
    EXPECT_FALSE(with(R"("basic_auth":{"username":7})"));
}

} // namespace
} // namespace vantor::tests
