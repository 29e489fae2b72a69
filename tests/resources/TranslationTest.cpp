// SPDX-License-Identifier: MIT
#include "platform/foundation/NSLocalizedString.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>

using vantor::platform::EnglishText;
using vantor::platform::englishTexts;

namespace {

const std::set<std::string> languages{"ar", "de", "es", "fr", "it", "ja", "pt_BR", "ru", "zh_CN"};

struct Message {
    std::string english; // the comment for translators
    std::string text;
};

/// The messages of a catalogue whose entries are one line each.
std::map<std::string, Message> catalogue(const std::string& language) {
    std::map<std::string, Message> messages;
    std::ifstream file(std::string(VANTOR_CATALOGUES "/") + language + ".po");
    const auto quoted = [](const std::string& line) {
        return line.substr(line.find('"') + 1, line.rfind('"') - line.find('"') - 1);
    };
    std::string english;
    std::string key;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("#. ")) {
            english = line.substr(3);
        } else if (line.starts_with("#,")) {
            ADD_FAILURE() << language << ": a message is marked: " << line;
        } else if (line.starts_with("msgid ")) {
            key = quoted(line);
        } else if (line.starts_with("msgstr ") && !key.empty()) {
            EXPECT_TRUE(messages.emplace(key, Message{english, quoted(line)}).second)
                << language << ' ' << key;
        }
    }
    return messages;
}

std::multiset<std::string> placeholders(std::string_view text) {
    std::multiset<std::string> found;
    for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{', open + 1)) {
        found.emplace(text.substr(open, text.find('}', open) - open + 1));
    }
    return found;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

TEST(Translations, EveryLanguageHasEveryTextWithItsPlaceholders) {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(VANTOR_CATALOGUES)) {
        found.insert(entry.path().stem().string());
    }
    ASSERT_EQ(found, languages);
    for (const std::string& language : languages) {
        const std::map<std::string, Message> messages = catalogue(language);
        EXPECT_EQ(messages.size(), englishTexts().size()) << language;
        for (const EnglishText& english : englishTexts()) {
            const auto message = messages.find(std::string(english.key));
            ASSERT_NE(message, messages.end()) << language << " lacks " << english.key;
            EXPECT_EQ(message->second.english, english.text) << language << ' ' << english.key;
            EXPECT_FALSE(message->second.text.empty()) << language << ' ' << english.key;
            EXPECT_EQ(placeholders(message->second.text), placeholders(english.text))
                << language << ' ' << english.key;
        }
    }
}

TEST(Translations, CaptionsFitUnderARing) {
    constexpr std::size_t longest = 18; // characters of small type in the narrowest column
    for (const std::string& language : languages) {
        for (const auto& [key, message] : catalogue(language)) {
            EXPECT_TRUE(!key.starts_with("home_") || characters(message.text) <= longest)
                << language << ' ' << key;
        }
    }
}

} // namespace
