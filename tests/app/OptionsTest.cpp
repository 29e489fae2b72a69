// SPDX-License-Identifier: MIT
#include "hosts/app/Options.hpp"

#include "hosts/app/AppMemory.hpp"

#include <gtest/gtest.h>

namespace vantor::hosts::app {

namespace {

Options given(std::vector<const char*> words) {
    words.insert(words.begin(), "vantor-app");
    const auto read = readOptions(static_cast<int>(words.size()), words.data());
    return std::holds_alternative<Options>(read) ? std::get<Options>(read) : Options{};
}

int statusOf(std::vector<const char*> words) {
    words.insert(words.begin(), "vantor-app");
    ::testing::internal::CaptureStderr();
    const auto read = readOptions(static_cast<int>(words.size()), words.data());
    (void)::testing::internal::GetCapturedStderr();
    return std::holds_alternative<int>(read) ? std::get<int>(read) : -1;
}

TEST(AppLinks, ExactlyFourAreKnown) {
    EXPECT_EQ(given({"vantor://action?showRam"}).page, PageKind::memory);
    EXPECT_EQ(given({"vantor://action?showStorage"}).page, PageKind::storage);
    EXPECT_EQ(given({"vantor://action?showCpu"}).page, PageKind::processor);
    const Options clean = given({"vantor://action?cleanRam"});
    EXPECT_EQ(clean.page, PageKind::memory);
    EXPECT_TRUE(clean.cleansRam);
}

/// Whatever a web page sends shows the first page and does nothing, also where it looks like an option.
TEST(AppLinks, WhatAnAttackerSendsDoesNothing) {
    for (const char* link :
         {"VANTOR://ACTION?CLEANRAM", "vantor://action?cleanRam&yes", "vantor://action?cleanRam#x",
          "vantor://user@action?cleanRam", "vantor://action:80?cleanRam", "vantor:action?cleanRam",
          "vantor://action/?cleanRam", " vantor://action?cleanRam", "vantor://action?cleanRam\n",
          "vantor://action?cleanRam%00", "vantor://action?emptyTrash", "vantor://action?end=1",
          "vantor://action?--snapshot", "javascript:alert(1)", "file:///etc/passwd", "$(reboot)",
          "\xff\xfe"}) {
        const Options options = given({link});
        EXPECT_EQ(options.page, PageKind::memory) << link;
        EXPECT_FALSE(options.cleansRam) << link;
        EXPECT_FALSE(options.snapshot) << link;
        EXPECT_EQ(windowWords(options), (std::vector<std::string>{"--page", "ram"})) << link;
    }
}

TEST(AppOptions, RefuseWhatTheyDoNotKnow) {
    EXPECT_EQ(statusOf({"--page", "network"}), 2);
    EXPECT_EQ(statusOf({"--snapshot", "ram"}), 2);
    EXPECT_EQ(statusOf({"--snapshot", "a.png", "ram"}), 2);
    EXPECT_EQ(statusOf({"--snapshot", "ram", "storage"}), 2);
    EXPECT_EQ(statusOf({"--snapshot", "ram", "a.gif"}), 2);
    EXPECT_EQ(statusOf({"--scale", "2"}), 2);
    EXPECT_EQ(statusOf({"--nonsense"}), 2);
    EXPECT_EQ(statusOf({"--snapshot", "ram", "a.PNG", "--scale", "0.5"}), -1);
}

/// The words come over a socket from whoever starts a program by that name.
TEST(AppOptions, GoToTheWindowThatRunsAndNoFurther) {
    Options options;
    options.page = PageKind::settings;
    options.cleansRam = true;
    options.snapshot = "a.png";
    const Options heard = optionsFromWords(windowWords(options));
    EXPECT_EQ(heard.page, PageKind::settings);
    EXPECT_TRUE(heard.cleansRam);
    EXPECT_FALSE(heard.snapshot);
    EXPECT_FALSE(optionsFromWords({"--page"}).page);
    EXPECT_FALSE(optionsFromWords({"--page", "nowhere", "--snapshot", "x"}).page);
}

TEST(AppMemory, ComesBackAsItWasAndRefusesNonsense) {
    const AppState state{QSize(900, 640), PageKind::processor};
    EXPECT_EQ(parseState(stateText(state)), state);
    for (const char* text : {"", "900", "900 640", "0 640 1", "-5 640 1", "900 640 4", "900 640 -1",
                             "99999999999 640 1", "40000 640 1", "a b c"}) {
        EXPECT_FALSE(parseState(text)) << text;
    }
}

} // namespace

} // namespace vantor::hosts::app
