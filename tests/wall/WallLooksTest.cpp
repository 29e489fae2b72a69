// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "PictureComparison.hpp"
#include "TestTree.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/widget/Snapshot.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <clocale>
#include <string>
#include <string_view>

namespace vantor::hosts::widget {

namespace {

struct Look {
    const char* picture; // in the documents, below wall
    const char* locale;
    AppearanceChoice appearance;
    std::size_t machines;
    const char* label;
};

constexpr Look looks[] = {
    {"light", "C", AppearanceChoice::light, 41, "dc"},
    {"dark", "C", AppearanceChoice::dark, 41, "role"}, // closer together, or they would have no names
    {"de", "de_DE", AppearanceChoice::light, 2000, "role"},
    {"ar", "ar_EG", AppearanceChoice::dark, 41, "dc"},
    {"squares", "C", AppearanceChoice::light, 10'000, "role"},
    {"cards", "C", AppearanceChoice::light, 9, ""},
};

/// Which font has the letters that the one of most pictures lacks.
QString familyFor(const QString& letter) {
    QTextLayout layout(letter, QApplication::font());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    return runs.isEmpty() ? QString() : runs.first().rawFont().familyName();
}

class WallLooks : public ::testing::TestWithParam<Look> {};

TEST_P(WallLooks, AreAsInTheDocuments) {
    const Look& look = GetParam();
    static const std::string first = look.locale; // fontconfig keeps what it was asked for first
    if (std::string_view(look.locale).starts_with("ar") && first != look.locale) {
        GTEST_SKIP() << "after " << first << " another font stands in for Arabic";
    }
    const std::string locale = look.locale + std::string(look.locale[1] == '\0' ? "" : ".UTF-8");
    qputenv("LC_ALL", locale.c_str());
    if (std::setlocale(LC_ALL, "") == nullptr) {
        GTEST_SKIP() << "the locale " << locale << " is not generated on this machine";
    }
    tests::putDemoInPlace();
    QApplication::setLayoutDirection(qt::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const tests::TestTree folder;
    Options options;
    options.snapshot = (folder.root() / "look.png").string();
    options.appearance = look.appearance;
    options.fleet.demo = look.machines;
    options.fleet.groupBy = look.label;
    common::FleetHost fleet(options.fleet);
    ASSERT_TRUE(fleet.open("test"));
    ASSERT_EQ(writeWall(options, fleet), 0);
    tests::expectAsInDocuments(QImage(QString::fromStdString(*options.snapshot)),
                               "wall/" + std::string(look.picture) + ".png",
                               look.picture != std::string_view("ar") ||
                                   familyFor(QStringLiteral("\u0628")) == QStringLiteral("DejaVu Sans"));
}

INSTANTIATE_TEST_SUITE_P(All, WallLooks, ::testing::ValuesIn(looks),
                         [](const auto& each) { return std::string(each.param.picture); });

} // namespace

} // namespace vantor::hosts::widget
