// SPDX-License-Identifier: MIT
#include "hosts/common/LinkHandlers.hpp"

#include "TestTree.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdlib>
#include <utility>

namespace vantor::hosts::common {
namespace {

using ::testing::Contains;
using ::testing::Not;

constexpr const char* entry = "[Desktop Entry]\nType=Application\nExec=vantor open %u\n";
constexpr const char* opener = "[Desktop Entry]\nExec = vantor\nMimeType = a/b;x-scheme-handler/vantor;\n";
constexpr const char* kind = "x-scheme-handler/vantor=";

/// A user's folders and the system's, which has a cache.
class Handlers : public ::testing::Test {
protected:
    Handlers() {
        ::setenv("XDG_CONFIG_HOME", path("config").c_str(), 1);
        ::setenv("XDG_CONFIG_DIRS", "not/absolute", 1);
        ::setenv("XDG_DATA_HOME", path("mine").c_str(), 1);
        ::setenv("XDG_DATA_DIRS", (path("none") + ":" + path("system")).c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", "Sway:GNOME", 1);
        m_tree.write("system/applications/mimeinfo.cache",
                     "[MIME Cache]\nx-scheme-handler/other=o.desktop;\n");
    }
    std::string path(const std::string& name) const { return (m_tree.root() / name).string(); }
    bool have() const { return LinkHandlers::fromEnvironment().haveScheme("vantor"); }

    tests::TestTree m_tree;
};

TEST_F(Handlers, AreEntriesThatAreThere) {
    EXPECT_FALSE(have());
    m_tree.write("system/applications/mimeinfo.cache",
                 std::string("[MIME Cache]\r\n#") + kind + "x\n" + kind + "gone.desktop;v-a.desktop;\n");
    EXPECT_FALSE(have()) << "a cache may be old";
    m_tree.write("system/applications/v/a.desktop", entry);
    EXPECT_TRUE(have()) << "its name has the folder's in front";
    m_tree.write("mine/applications/v-a.desktop", std::string(entry) + "Hidden=true\n");
    EXPECT_FALSE(have()) << "the user has deleted it";
    for (const auto& [program, isThere] :
         {std::pair("sh", true), {"/bin/sh", true}, {"no such", false}, {"/no/sh", false}}) {
        m_tree.write("mine/applications/v-a.desktop", std::string(entry) + "TryExec=" + program + '\n');
        EXPECT_EQ(have(), isThere) << program;
    }
}

TEST_F(Handlers, AreFoundInAFolderWithoutACache) {
    m_tree.write("mine/applications/mine.desktop", opener);
    EXPECT_TRUE(have());
    m_tree.write("config/mimeapps.list", std::string("[Removed Associations]\n") + kind + "mine.desktop\n");
    EXPECT_FALSE(have()) << "the user has taken the scheme from it";
    m_tree.write("config/gnome-mimeapps.list",
                 std::string("[Default Applications]\n") + kind + "mine.desktop\n");
    EXPECT_TRUE(have()) << "and chosen it for one desktop";
}

TEST_F(Handlers, AreChosenByThoseWhoDoNotSayIt) {
    m_tree.write("system/applications/v.desktop", entry);
    EXPECT_FALSE(have());
    for (const char* group : {"[Default Applications]\n", "[Added Associations]\n"}) {
        m_tree.write("config/mimeapps.list", std::string(group) + kind + "no.desktop;v.desktop\n");
        EXPECT_TRUE(have()) << group;
    }
    m_tree.write("config/mimeapps.list", std::string("[Other]\n") + kind + "v.desktop\n");
    EXPECT_FALSE(have());
}

TEST_F(Handlers, AreLookedForInRegularFilesOnly) {
    m_tree.write("mine/applications/a.desktop", opener);
    ASSERT_EQ(::mkfifo(path("mine/applications/b.desktop").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(path("mine/applications/mimeapps.list").c_str(), 0600), 0);
    EXPECT_TRUE(have());
    EXPECT_THAT(LinkHandlers::fromEnvironment().lists, Not(Contains("not/absolute/mimeapps.list")));
}

} // namespace
} // namespace vantor::hosts::common
