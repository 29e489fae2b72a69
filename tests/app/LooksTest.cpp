// SPDX-License-Identifier: MIT
#include "AppStage.hpp"
#include "PictureComparison.hpp"
#include "TestTree.hpp"
#include "hosts/app/Snapshot.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollArea>
#include <algorithm>

namespace vantor::hosts::app {

namespace {

using platform::Appearance;

struct Shown {
    const char* picture; // in the documents, below app, without its ending
    PageKind page;
    const char* locale;
    Appearance appearance;
};

constexpr Shown looks[] = {
    {"ram_en_light", PageKind::memory, "en_US", Appearance::light},
    {"ram_en_dark", PageKind::memory, "en_US", Appearance::dark},
    {"ram_ar_light", PageKind::memory, "ar_EG", Appearance::light},
    {"ram_de_dark", PageKind::memory, "de_DE", Appearance::dark},
    {"storage_en_light", PageKind::storage, "en_US", Appearance::light},
    {"storage_de_light", PageKind::storage, "de_DE", Appearance::light},
    {"storage_ar_dark", PageKind::storage, "ar_EG", Appearance::dark},
    {"processor_en_light", PageKind::processor, "en_US", Appearance::light},
    {"processor_de_dark", PageKind::processor, "de_DE", Appearance::dark},
    {"processor_ar_light", PageKind::processor, "ar_EG", Appearance::light},
    {"settings_en_dark", PageKind::settings, "en_US", Appearance::dark},
    {"settings_de_light", PageKind::settings, "de_DE", Appearance::light},
    {"settings_ar_dark", PageKind::settings, "ar_EG", Appearance::dark},
};

class AppLooks : public ::testing::TestWithParam<Shown> {};

TEST_P(AppLooks, AreAsInTheDocuments) {
    const Shown& look = GetParam();
    static const std::string first = look.locale; // fontconfig keeps what it was asked for first
    if (std::string_view(look.locale).starts_with("ar") && first != look.locale) {
        GTEST_SKIP() << "after " << first << " another font stands in for Arabic";
    }
    if (!tests::setLanguage((look.locale + std::string(".UTF-8")).c_str())) {
        GTEST_SKIP() << "the locale " << look.locale << " is not generated on this machine";
    }
    const tests::TestTree folder;
    Options options;
    options.snapshot = (folder.root() / "look.png").string();
    options.page = look.page;
    options.appearance = look.appearance;
    options.demo = true;
    ASSERT_EQ(writeSnapshot(options), 0);
    tests::expectAsInDocuments(QImage(QString::fromStdString(*options.snapshot)),
                               std::string("app/") + look.picture + ".png");
}

INSTANTIATE_TEST_SUITE_P(All, AppLooks, ::testing::ValuesIn(looks),
                         [](const auto& each) { return std::string(each.param.picture); });

class AppLanguage : public ::testing::TestWithParam<std::tuple<const char*, double>> {};

/// On no page, in no language, with usual and with larger text.
TEST_P(AppLanguage, NothingIsCutOff) {
    const auto& [locale, scale] = GetParam();
    if (!tests::setLanguage((locale + std::string(".UTF-8")).c_str())) {
        GTEST_SKIP() << "the locale " << locale << " is not generated on this machine";
    }
    for (const PageKind page :
         {PageKind::memory, PageKind::storage, PageKind::processor, PageKind::settings}) {
        const auto content = tests::shownContent(page, Appearance::light, scale);
        const auto* const scroll = content->findChild<QScrollArea*>();
        EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width()) << static_cast<int>(page);
        for (const Text* text : content->findChildren<Text*>()) {
            if (!text->isVisible() || text->text().isEmpty()) {
                continue;
            }
            const QRect needed = text->fontMetrics().boundingRect(
                QRect(0, 0, text->width(), 10'000), text->wordWrap() ? Qt::TextWordWrap : 0, text->text());
            EXPECT_LE(needed.width(), text->width() + 1) << text->text().toStdString();
            EXPECT_LE(needed.height(), text->height() + 1) << text->text().toStdString();
        }
        for (const ActionButton* button : content->findChildren<ActionButton*>()) {
            if (button->isVisible()) {
                EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, AppLanguage,
                         ::testing::Combine(::testing::Values("en_US", "ar_EG", "de_DE", "es_ES", "fr_FR",
                                                              "it_IT", "ja_JP", "pt_BR", "ru_RU", "zh_CN"),
                                            ::testing::Values(1.0, 1.5)),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param)) +
                                    (std::get<1>(each.param) > 1 ? "_large" : "");
                         });

} // namespace

} // namespace vantor::hosts::app
