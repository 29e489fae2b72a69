// SPDX-License-Identifier: MIT
#include "ColourArchives.hpp"
#include "FailingAllocation.hpp"
#include "platform/foundation/NSKeyedUnarchiver.hpp"
#include "platform/propertylist/PropertyListText.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace vantor::platform;
using vantor::tests::ColourArchive;
using vantor::tests::colourArchives;

namespace {

/// A kept archive's bytes.
std::string bytesOf(const ColourArchive& archive) {
    std::string bytes;
    EXPECT_TRUE(appendBase64(bytes, archive.base64)) << archive.name;
    return bytes;
}

std::string described(const UnarchivedObject& object) {
    if (const auto* const color = std::get_if<UIColor>(&object)) {
        std::ostringstream text;
        text.precision(17);
        text << (color->isGray() ? "gray " : "rgb ") << color->red();
        if (!color->isGray()) {
            text << ' ' << color->green() << ' ' << color->blue();
        }
        text << ' ' << color->alpha();
        return text.str();
    }
    if (const auto* const other = std::get_if<OtherClass>(&object)) {
        return "other " + other->className;
    }
    return std::holds_alternative<DecodingError>(object) ? "error" : "nothing";
}

UnarchivedObject unarchive(std::string_view bytes) {
    return NSKeyedUnarchiver::unarchiveTopLevelObjectWithData(bytes);
}

/// An XML archive around the colour's own keys, its class chain and the numbered objects from 3 on.
std::string archive(std::string_view keys, std::string_view chain = "<string>UIColor</string>",
                    std::string_view more = "") {
    std::string text =
        "<plist><dict><key>$version</key><integer>100000</integer><key>$archiver</key>"
        "<string>NSKeyedArchiver</string><key>$top</key><dict><key>root</key><dict><key>CF$UID</key>"
        "<integer>1</integer></dict></dict><key>$objects</key><array><string>$null</string><dict>"
        "<key>$class</key><dict><key>CF$UID</key><integer>2</integer></dict>";
    text.append(keys).append(
        "</dict><dict><key>$classname</key><string>Tint</string><key>$classes</key><array>");
    return text.append(chain).append("</array></dict>").append(more).append("</array></dict></plist>");
}

std::string number(std::string_view key, std::string_view value) {
    return std::string("<key>").append(key).append("</key><real>").append(value).append("</real>");
}

const std::string grayKeys = "<key>UIColorComponentCount</key><integer>2</integer>" +
                             number("UIWhite", "0.5") + number("UIAlpha", "1");

TEST(Unarchiver, DecodesTheCapturedArchives) {
    ASSERT_EQ(colourArchives().size(), 16U);
    for (const ColourArchive& sample : colourArchives()) {
        const UnarchivedObject object = unarchive(bytesOf(sample));
        EXPECT_EQ(described(object), sample.outcome) << sample.name;
        if (sample.colorName != "-") {
            EXPECT_EQ(std::get<UIColor>(object), UIColor::named(sample.colorName)) << sample.name;
        }
    }
}

TEST(Unarchiver, OnlyASoundArchiveIsOfAnotherClass) {
    EXPECT_EQ(described(unarchive(archive(grayKeys))), "gray 0.5 1");
    EXPECT_EQ(described(unarchive(archive(grayKeys, "<string>Tint</string><string>UIColor</string>"))),
              "gray 0.5 1");
    EXPECT_EQ(described(unarchive(archive(grayKeys, "<string>NSColor</string>"))), "other Tint");
    const std::string lost = "<key>a</key><array><dict><key>CF$UID</key><integer>9</integer></dict></array>";
    EXPECT_EQ(described(unarchive(archive(lost, "<string>NSColor</string>"))), "error");
    for (const char* const chain : {"", "<integer>1</integer>", "<string>UIColor</string><true/>"}) {
        EXPECT_EQ(described(unarchive(archive(grayKeys, chain))), "error") << chain;
    }
    std::string other = archive(grayKeys);
    other.replace(other.find("100000"), 6, "100001");
    EXPECT_EQ(described(unarchive(other)), "error");
    std::string rootless = archive(grayKeys);
    rootless.replace(rootless.find("root"), 4, "boot");
    EXPECT_EQ(described(unarchive(rootless)), "error");
}

TEST(Unarchiver, TakesEveryFormOfComponentsAndNoOther) {
    const std::string count = "<key>UIColorComponentCount</key><integer>4</integer>";
    const std::string wide = count + number("UIRed", "1.2") + number("UIGreen", "-0.25") +
                             "<key>UIBlue</key><integer>1</integer>" + number("UIAlpha", "1") +
                             number("UIAlpha-Double", "0.3");
    EXPECT_EQ(described(unarchive(archive(wide))), "rgb 1.2 -0.25 1 0.29999999999999999");
    EXPECT_EQ(described(unarchive(archive(count + grayKeys.substr(grayKeys.find("</integer>") + 10)))),
              "error");
    EXPECT_EQ(described(unarchive(archive(count + number("UIRed", "1") + number("UIGreen", "1")))), "error");
    EXPECT_EQ(described(unarchive(archive(""))), "error");
    const std::string name = "<key>UISystemColorName</key><dict><key>CF$UID</key><integer>3</integer></dict>";
    EXPECT_EQ(std::get<UIColor>(unarchive(
                  archive(grayKeys + name, "<string>UIColor</string>", "<string>systemRedColor</string>"))),
              UIColor::systemRedColor());
    EXPECT_EQ(described(unarchive(archive(grayKeys + name, "<string>UIColor</string>", "<true/>"))),
              "gray 0.5 1");
    EXPECT_EQ(described(unarchive(archive(grayKeys + name))), "error"); // names an object that is not there
}

TEST(Unarchiver, CutAnywhereOrWithoutMemoryIsAnError) {
    for (const ColourArchive& sample : colourArchives()) {
        const std::string bytes = bytesOf(sample);
        for (std::size_t length = 0; length + 1 < bytes.size(); ++length) {
            ASSERT_EQ(described(unarchive(std::string_view(bytes).substr(0, length))), "error")
                << sample.name << ' ' << length;
        }
        const std::string whole = described(unarchive(bytes));
        const std::size_t failed =
            vantor::tests::failEachAllocation([&] { return std::string_view(bytes); }, unarchive,
                                              [&](const UnarchivedObject& object, bool hasFailed) {
                                                  EXPECT_EQ(described(object), hasFailed ? "error" : whole)
                                                      << sample.name;
                                              });
        EXPECT_GT(failed, 0U);
    }
}

} // namespace
