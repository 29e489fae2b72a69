// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "ThreadTime.hpp"
#include "platform/propertylist/PropertyList.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>

using namespace vantor::platform;
using vantor::tests::AllocationWatch;
using vantor::tests::threadMilliseconds;

namespace {

constexpr std::string_view prologue = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                      "<!DOCTYPE plist PUBLIC \"-//Example//DTD PLIST 1.0//EN\" "
                                      "\"file:///nowhere/PropertyList-1.0.dtd\">\n";

PropertyListResult readAll(std::string_view content) {
    return readPropertyList(
        std::string(prologue).append("<plist version=\"1.0\">").append(content).append("</plist>"));
}

std::optional<PropertyListObject> top(const PropertyListResult& result) {
    const auto* const object = std::get_if<PropertyListObject>(&result);
    return object != nullptr ? std::optional(*object) : std::nullopt;
}

std::optional<PropertyListObject> readXML(std::string_view content) {
    return top(readAll(content));
}

bool isRefused(std::string_view content) {
    return !readXML(content).has_value();
}

TEST(XMLPropertyList, ReadsEveryKindOfScalar) {
    EXPECT_EQ(readXML("<true/>")->boolean(), true);
    EXPECT_EQ(readXML("<false></false>")->boolean(), false);
    EXPECT_EQ(readXML("<integer> -42\n</integer>")->integer(), -42);
    EXPECT_EQ(readXML("<integer>+0x1F</integer>")->integer(), 31);
    EXPECT_EQ(readXML("<integer>-9223372036854775808</integer>")->integer(),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(readXML("<integer>18446744073709551615</integer>")->integer(), std::nullopt);
    EXPECT_EQ(readXML("<integer>18446744073709551615</integer>")->number(), 18'446'744'073'709'551'615.0);
    EXPECT_EQ(readXML("<real>0.2</real>")->number(), 0.2);
    EXPECT_EQ(readXML("<real>+infinity</real>")->number(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(readXML("<date>2001-01-02T00:00:01Z</date>")->date(), 86'401.0);
    EXPECT_EQ(readXML("<date>1969-12-31T23:59:59Z</date>")->date(), -978'307'201.0);
    EXPECT_EQ(readXML("<data>\n\tAAEC\n\t/w==\n</data>")->data(), std::string_view("\0\1\2\xFF", 4));
    EXPECT_EQ(readXML("<data/>")->data(), "");
    EXPECT_EQ(readXML("<string>a &lt;&amp;&#xE9; <![CDATA[<b>]]> </string>")->string(), "a <&é <b> ");
}

TEST(XMLPropertyList, ReadsContainersAndReferences) {
    const std::optional<PropertyListObject> list = readXML(
        "<dict><key>a</key><array><integer>1</integer><dict/><array/></array><key>b</key><string/>"
        "<key>u</key><dict><key>CF$UID</key><integer>3</integer></dict><key>v</key><dict><key>CF$UID</key>"
        "<integer>-3</integer></dict><key>b</key><true/></dict>");
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->objectForKey("a")->size(), 3U);
    EXPECT_EQ(list->objectForKey("a")->at(0)->integer(), 1);
    EXPECT_EQ(list->objectForKey("a")->at(1)->kind(), PropertyListKind::dictionary);
    EXPECT_EQ(list->objectForKey("b")->boolean(), true); // the last one counts
    EXPECT_EQ(list->objectForKey("u")->uid(), 3U);
    EXPECT_EQ(list->objectForKey("v")->objectForKey("CF$UID")->integer(), -3);
}

TEST(XMLPropertyList, RefusesWhatIsNoPropertyList) {
    std::ifstream file(VANTOR_TEST_DATA
                       "/data/refused.txt"); // one a line, each the content of a plist element
    int refused = 0;
    for (std::string content; std::getline(file, content); ++refused) {
        EXPECT_TRUE(isRefused(content)) << content;
    }
    EXPECT_EQ(refused, 29);
    for (const char* const bytes :
         {"plain text", "{ a = b; }", "<dict/>", "<plist/>", "<plist><true/>", "\xFF\xFE", "<?xml?>"}) {
        EXPECT_FALSE(top(readPropertyList(bytes)).has_value()) << bytes;
    }
}

TEST(XMLPropertyList, ExpandsNoEntitiesAndLoadsNothing) {
    std::string laughs = "<!DOCTYPE plist [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 30; ++i) {
        const std::string before = "&a" + std::to_string(i - 1) + ";";
        laughs.append("<!ENTITY a")
            .append(std::to_string(i))
            .append(" \"")
            .append(before)
            .append(before)
            .append("\">");
    }
    laughs += "]><plist><string>&a29;</string></plist>";
    const AllocationWatch watch;
    EXPECT_FALSE(top(readPropertyList(laughs)).has_value());
    EXPECT_LT(watch.mostBytes(), 200'000U);
    EXPECT_FALSE(
        top(readPropertyList("<!DOCTYPE plist [<!ENTITY f SYSTEM \"file:///etc/passwd\">]><plist><string>&f;"
                             "</string></plist>"))
            .has_value());
    EXPECT_TRUE(isRefused("<string>&f;</string>"));
}

TEST(XMLPropertyList, HostileListsStayWithinBounds) {
    const auto repeated = [](std::string_view piece, std::size_t times) {
        std::string text = "<plist>";
        while (times-- > 0) {
            text += piece;
        }
        return text;
    };
    const std::string hostile[] = {
        repeated("<array>", 140'000),
        repeated("<array><string>", 60'000),
        "<plist><array>" + repeated("<true/>", 140'000),
        "<plist><string " + std::string(1'000'000, 'a') + "=\"\"/>",
        "<plist><string>" + std::string(1'000'000, 'a'),
        "<plist><" + std::string(1'000'000, 'a') + "/>",
        "<!--" + std::string(1'000'000, '-'),
    };
    for (const std::string& bytes : hostile) {
        const AllocationWatch watch;
        EXPECT_LT(threadMilliseconds([&] { EXPECT_FALSE(top(readPropertyList(bytes)).has_value()); }),
                  50 * VANTOR_SLOWDOWN);
        EXPECT_LT(watch.mostBytes(), 12'000'000U) << bytes.substr(0, 30);
    }
    EXPECT_FALSE(isRefused("<array>" + std::string(900'000, ' ') + "</array>"));
}

TEST(XMLPropertyList, CutAnywhereOrWithoutMemoryThereIsNoList) {
    const std::string whole = std::string(prologue) +
                              "<plist><dict><key>k</key><array><data>AAEC</data><real>1</real>"
                              "<string>a text that is too long to lie in place</string>"
                              "</array></dict></plist>";
    ASSERT_TRUE(top(readPropertyList(whole)).has_value());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(top(readPropertyList(whole.substr(0, length))).has_value()) << length;
    }
    const std::size_t failed = vantor::tests::failEachAllocation(
        [&] { return std::string(whole); },
        [](std::string input) { return readPropertyList(std::move(input)); },
        [](const PropertyListResult& result, bool hasFailed) {
            EXPECT_EQ(std::holds_alternative<PropertyListFailure>(result), hasFailed);
        });
    EXPECT_GE(failed, 20U); // expat's own are among them
}

} // namespace
