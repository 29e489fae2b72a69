// SPDX-License-Identifier: MIT
#include "Eventually.hpp"
#include "WidgetStage.hpp"
#include "hosts/common/UserFile.hpp"
#include "hosts/widget/Autostart.hpp"
#include "hosts/widget/Readiness.hpp"
#include "hosts/widget/WindowMemory.hpp"

#include <gtest/gtest.h>

#include <QApplication>

namespace vantor::hosts::widget {

namespace {

TEST(Manners, AWindowComesBackAsItWas) {
    for (const WindowState& state :
         {WindowState{QPoint(-40, 300), false, true}, WindowState{std::nullopt, true, false, true, true}}) {
        rememberWindow(state);
        EXPECT_EQ(rememberedWindow(), state);
    }
    for (const char* foreign : {"", "wide 1 2", "expandedness", "\xff\xfe", "1 2 expanded"}) {
        EXPECT_EQ(parseState(foreign), std::nullopt) << foreign;
    }
    for (const char* halfway : {"compact 1", "compact 1 2x", "compact 99999999999 2", "compact later"}) {
        EXPECT_EQ(parseState(halfway), (WindowState{std::nullopt, false})) << halfway;
    }
}

TEST(Manners, AutostartIsAnEntryThatComesAndGoes) {
    EXPECT_FALSE(isAutostarted());
    Options options;
    options.onDesktop = options.tray = true;
    options.appearance = AppearanceChoice::dark;
    EXPECT_EQ(setAutostart(true, options), std::nullopt);
    EXPECT_TRUE(isAutostarted());
    const std::string entry =
        qEnvironmentVariable("XDG_CONFIG_HOME").toStdString() + "/autostart/vantor-widget.desktop";
    EXPECT_NE(common::readUserFile(entry).find("\nTryExec=/"), std::string::npos);
    EXPECT_NE(common::readUserFile(entry).find("\nExec=\"/"), std::string::npos);
    EXPECT_NE(common::readUserFile(entry).find("\" --appearance dark --on-desktop --tray\n"),
              std::string::npos);
    Options untrayed = options;
    untrayed.tray = false;
    followInAutostart(untrayed, {}); // not the one that was written
    EXPECT_NE(common::readUserFile(entry).find("--tray\n"), std::string::npos);
    followInAutostart(options, untrayed);
    EXPECT_NE(common::readUserFile(entry).find("--on-desktop\n"), std::string::npos);
    EXPECT_EQ(setAutostart(false, {}), std::nullopt);
    EXPECT_FALSE(isAutostarted());
    EXPECT_EQ(setAutostart(false, {}), std::nullopt);

    EXPECT_EQ(execArgument("/opt/my tools/$x%y"), R"("/opt/my tools/\\$x%%y")");
    EXPECT_EQ(execArgument("/opt/two\nlines"), std::nullopt);
    EXPECT_EQ(installedPath("/opt/vantor-widget (deleted)"), "/opt/vantor-widget");
    EXPECT_EQ(installedPath("/opt/vantor-widget"), "/opt/vantor-widget");
    EXPECT_EQ(execArgument(R"(/a\b"c)"), R"("/a\\\\b\\"c")");
}

TEST(Manners, WithoutAHomeNothingIsWritten) {
    EXPECT_NE(common::writeUserFile(common::userFilePath("", "autostart/x"), ""), std::nullopt);
}

// The widget's own timer would ask for a second share of the processor after a minute only.
TEST(Readiness, ComesAfterTwoSecondsWhateverTheInterval) {
    tests::WidgetStage stage;
    stage.setStore(tests::storedText("refreshSeconds", "60"));
    stage.controller->view();
    const Readiness ready(*stage.controller);
    stage.play();
    const auto work = [](platform::SimulatedState& state) { state.cpuLoad.user += 1; };
    stage.machine.change(work);
    stage.advance(1.9);
    EXPECT_FALSE(ready.isReached());
    stage.machine.change(work);
    stage.advance(0.2);
    EXPECT_TRUE(ready.isReached());
}

} // namespace

} // namespace vantor::hosts::widget
