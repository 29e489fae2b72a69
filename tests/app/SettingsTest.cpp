// SPDX-License-Identifier: MIT
#include "AppStage.hpp"
#include "ColourArchives.hpp"
#include "TestTree.hpp"
#include "hosts/app/AppContent.hpp"
#include "hosts/common/HostViewer.hpp"
#include "platform/core/MakeForEver.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace vantor::hosts::app {

namespace {

/// The page on a preference file of its own.
class SettingsPage : public ::testing::Test {
protected:
    void SetUp() override {
        tests::putWholeDemoInPlace();
        qputenv("VANTOR_SUITE_FILE", m_file.c_str());
        m_viewer = &platform::makeForEver<common::HostViewer>(false);
    }
    void TearDown() override {
        m_pane.reset();
        qunsetenv("VANTOR_SUITE_FILE");
    }
    void open() {
        m_pane =
            std::make_unique<SettingsPane>(std::make_shared<ArcChartViewModel>(), [this] { ++m_changes; });
        applyLook(*m_pane, Look::of(platform::Appearance::light, 1, {}));
        m_pane->follow(true);
        ASSERT_TRUE(tests::turnUntil([this] { return m_changes > 0; }));
    }
    [[nodiscard]] std::string content() const {
        std::ifstream file(m_file);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool holds(const std::string& text) const { return content().find(text) != std::string::npos; }

    tests::TestTree m_tree;
    std::string m_file = (m_tree.root() / "store.plist").string();
    common::HostViewer* m_viewer = nullptr;
    std::unique_ptr<SettingsPane> m_pane;
    int m_changes = 0;
};

TEST_F(SettingsPage, WritesWhatIsChosenAndKeepsWhatItDoesNotKnow) {
    m_tree.write("store.plist", R"(<?xml version="1.0"?><plist version="1.0"><dict><key>other</key>
<integer>7</integer></dict></plist>)");
    open();
    m_pane->flag("isInactiveRAMHide").click();
    EXPECT_TRUE(tests::turnUntil([this] { return holds("isInactiveRAMHide"); }));
    EXPECT_TRUE(holds("<integer>7</integer>"));
    m_pane->setColorAsker([](const QColor&) { return QColor(0xBF, 0x5A, 0xF2); });
    m_pane->colorButton().click();
    EXPECT_TRUE(tests::turnUntil([this] { return holds("chartcolor"); }));
    m_pane->automatic().click();
    EXPECT_TRUE(tests::turnUntil([this] { return !holds("chartcolor"); }));
    m_pane->resetButton().click();
    EXPECT_TRUE(tests::turnUntil([this] { return !holds("isInactiveRAMHide"); }));
    EXPECT_TRUE(holds("<integer>7</integer>"));
}

TEST_F(SettingsPage, RefusesSecondsOutOfRange) {
    open();
    for (const char* text : {"0", "-1", "3601", "nan", "0x10", "", "2 s"}) {
        m_pane->seconds().setText(QString::fromLatin1(text));
        emit m_pane->seconds().editingFinished();
        EXPECT_TRUE(m_pane->seconds().isRefused()) << text;
    }
    EXPECT_FALSE(holds("refreshSeconds"));
    m_pane->seconds().setText(QStringLiteral("2,5"));
    emit m_pane->seconds().editingFinished();
    EXPECT_TRUE(tests::turnUntil([this] { return holds("<string>2.5</string>"); }));
}

TEST_F(SettingsPage, NeverOverwritesABrokenFileButSetsItAsideWhenAsked) {
    const std::string broken = "this was meant to be a list";
    m_tree.write("store.plist", broken);
    open();
    EXPECT_FALSE(m_pane->trouble().text().isEmpty());
    m_pane->flag("isInactiveRAMHide").click();
    m_pane->resetButton().click();
    const int before = m_changes;
    (void)tests::turnUntil(
        [&] { return m_changes > before || !m_pane->flag("isInactiveRAMHide").isChecked(); });
    EXPECT_EQ(content(), broken);
    m_pane->setAsideButton().click();
    EXPECT_TRUE(tests::turnUntil([&] { return content() != broken; }));
    int kept = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_tree.root())) {
        std::ifstream file(entry.path());
        kept += std::string(std::istreambuf_iterator<char>(file), {}) == broken ? 1 : 0;
    }
    EXPECT_EQ(kept, 1);
}

/// What ends every widget is to be set right here.
TEST_F(SettingsPage, LivesWithAnArchiveOfAnotherClassAndSaysSo) {
    m_tree.write("store.plist", R"(<?xml version="1.0"?><plist version="1.0"><dict><key>chartcolor</key>
<data>)" + tests::archiveNamed("root-string") +
                                    "</data></dict></plist>");
    AppContent content(false);
    content.settings().follow(true);
    Text* said = nullptr;
    EXPECT_TRUE(tests::turnUntil([&] {
        for (Text* const text : content.settings().findChildren<Text*>()) {
            said = text->text().startsWith(QStringLiteral("chartcolor: ")) ? text : said;
        }
        return said != nullptr;
    }));
    content.settings().automatic().click();
    EXPECT_TRUE(tests::turnUntil([&] { return !holds("chartcolor") && said->text().at(0) != 'c'; }));
}

TEST_F(SettingsPage, FollowsWhatOthersWrite) {
    open();
    EXPECT_FALSE(m_pane->flag("preventCleanRAMFromWidget").isChecked());
    m_tree.write("store.plist", R"(<?xml version="1.0"?><plist version="1.0"><dict>
<key>preventCleanRAMFromWidget</key><true/></dict></plist>)");
    EXPECT_TRUE(tests::turnUntil([this] { return m_pane->flag("preventCleanRAMFromWidget").isChecked(); }));
}

} // namespace

} // namespace vantor::hosts::app
