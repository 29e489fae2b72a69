// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "PictureComparison.hpp"
#include "TestTree.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/widget/Snapshot.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>
#include <clocale>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

struct Look {
    const char* picture; // in the documents, without its ending
    const char* locale;
    AppearanceChoice appearance;
    bool expanded;
    double scale;
};

constexpr Look looks[] = {
    {"widget-light", "C", AppearanceChoice::light, true, 2}, // those that greet the reader
    {"widget-dark", "C", AppearanceChoice::dark, true, 2},
    {"looks/en_light_expanded_1x", "en_US", AppearanceChoice::light, true, 1},
    {"looks/en_dark_expanded_1_5x", "en_US", AppearanceChoice::dark, true, 1.5},
    {"looks/en_light_compact_2x", "en_US", AppearanceChoice::light, false, 2},
    {"looks/en_dark_compact_1x", "en_US", AppearanceChoice::dark, false, 1},
    {"looks/de_light_expanded_1_5x", "de_DE", AppearanceChoice::light, true, 1.5},
    {"looks/de_dark_compact_2x", "de_DE", AppearanceChoice::dark, false, 2},
    {"looks/ja_dark_expanded_1x", "ja_JP", AppearanceChoice::dark, true, 1},
    {"looks/ja_light_compact_1_5x", "ja_JP", AppearanceChoice::light, false, 1.5},
    {"looks/ar_light_expanded_2x", "ar_EG", AppearanceChoice::light, true, 2},
    {"looks/ar_dark_compact_1x", "ar_EG", AppearanceChoice::dark, false, 1},
};

class Looks : public ::testing::TestWithParam<Look> {};

/// One look in one language.
TEST_P(Looks, AreAsInTheDocuments) {
    const Look& look = GetParam();
    const std::string locale = look.locale + std::string(".UTF-8");
    qputenv("LC_ALL", locale.c_str());
    if (std::setlocale(LC_ALL, "") == nullptr) {
        GTEST_SKIP() << "the locale " << locale << " is not generated on this machine";
    }
    tests::putDemoInPlace();
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const tests::TestTree folder;
    Options options;
    options.snapshot = (folder.root() / "look.png").string();
    options.expanded = look.expanded;
    options.appearance = look.appearance;
    options.scale = look.scale;
    options.demo = true;
    ASSERT_EQ(writeSnapshot(options), 0);
    tests::expectAsInDocuments(QImage(QString::fromStdString(*options.snapshot)),
                               look.picture + std::string(".png"));
}

INSTANTIATE_TEST_SUITE_P(All, Looks, ::testing::ValuesIn(looks), [](const auto& each) {
    std::string name = each.param.picture;
    std::ranges::replace_if(
        name, [](char c) { return c == '/' || c == '-'; }, '_');
    return name;
});

} // namespace

} // namespace vantor::hosts::widget
