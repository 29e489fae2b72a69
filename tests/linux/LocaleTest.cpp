// SPDX-License-Identifier: MIT
#include "platform/linux/user/LinuxViewer.hpp"
#include "platform/linux/user/UserLocale.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

// Locale and environment are process-wide: each test sets all of what it depends on.
namespace vantor::tests {
namespace {

using namespace platform::linux;

void environment(const char* all, const char* language) {
    ::setenv("LC_ALL", all, 1);
    ::setenv("LANGUAGE", language, 1);
}

TEST(Locale, LanguageTags) {
    const std::pair<const char*, const char*> names[] = {
        {"pt_BR.UTF-8", "pt-BR"}, {"pt_PT", "pt"},       {"zh_CN.GB18030", "zh-Hans"},
        {"zh_TW", "zh-Hant"},     {"zh", "zh-Hans"},     {"de_AT@euro", "de"},
        {"it:en", "it"},          {"en_GB.UTF-8", "en"}, {"C", "en"},
        {"C.UTF-8", "en"},        {"POSIX", "en"},       {"", "en"},
        {"../../etc", "en"},      {"x", "en"},           {"haw_US", "haw"}};
    for (const auto& [name, tag] : names) {
        EXPECT_EQ(languageTag(name), tag) << name;
    }
}

TEST(Locale, ALocaleThatWasNotGeneratedStillPicksTheTexts) {
    environment("it_IT.ISO-8859-15", "");
    LinuxViewer viewer;
    const std::optional<std::string> text = viewer.localizedString("home_FREE");
    EXPECT_EQ(viewer.localeSigns().language, text ? "it" : "en");
    if (!text) {
        GTEST_SKIP() << "no message catalogues were built, or no locale that gettext looks at LANGUAGE in";
    }
    EXPECT_NE(*text, "home_FREE");
    EXPECT_FALSE(viewer.localizedString("home_NOSUCHTEXT"));
    EXPECT_FALSE(viewer.localizedString(""));
}

TEST(Locale, LanguageGoesBeforeTheLocaleButForC) {
    const std::pair<const char*, const char*> choices[] = {
        {"ru:de", "ru"}, {"xx:pt_BR", "pt-BR"}, {"xx", "en"}};
    for (const auto& [languages, chosen] : choices) {
        for (const char* const locale :
             {"C.UTF-8", "it_IT.ISO-8859-15"}) { // where gettext may look at LANGUAGE
            environment(locale, languages);
            LinuxViewer viewer;
            const bool translated = viewer.localizedString("home_FREE").has_value();
            EXPECT_EQ(viewer.localeSigns().language, translated ? chosen : "en")
                << locale << ' ' << languages;
        }
    }
    environment("C", "ru");
    LinuxViewer viewer;
    EXPECT_EQ(viewer.localeSigns(), platform::LocaleSigns());
    EXPECT_FALSE(viewer.localizedString("home_FREE"));
    environment("C.UTF-8", "en:de"); // English is not passed over for the next language
    EXPECT_FALSE(LinuxViewer().localizedString("home_FREE"));
}

TEST(Locale, SignsComeFromTheNumericLocaleInUtf8) {
    const struct {
        const char* locale;
        const char *decimal, *grouping, *one;
    } rows[] = {{"it_IT.UTF-8", ",", ".", "1"},      {"de_DE.ISO-8859-1", ",", ".", "1"},
                {"fr_FR.UTF-8", ",", "\u202F", "1"}, {"ru_RU.UTF-8", ",", "\u202F", "1"},
                {"fa_IR.UTF-8", "٫", "٬", "۱"},      {"ja_JP.UTF-8", ".", ",", "1"}};
    bool tried = false;
    for (const auto& row : rows) {
        if (std::setlocale(LC_ALL, row.locale) == nullptr) {
            continue;
        }
        tried = true;
        environment(row.locale, "");
        const platform::LocaleSigns signs = currentLocaleSigns();
        EXPECT_EQ(signs.decimal, row.decimal) << row.locale;
        EXPECT_EQ(signs.grouping, row.grouping) << row.locale;
        EXPECT_EQ(signs.digits[1], row.one) << row.locale;
    }
    if (!tried) {
        GTEST_SKIP() << "none of these locales was generated";
    }
}

} // namespace
} // namespace vantor::tests
