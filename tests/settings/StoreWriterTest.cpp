// SPDX-License-Identifier: MIT
#include "settings/StoreWriter.hpp"

#include "SimulatedStore.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"
#include "settings/ChartColor.hpp"
#include "settings/DeepLink.hpp"
#include "settings/SettingState.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::PropertyListForm;
using platform::PropertyListObject;
using testing::HasSubstr;

namespace {

/// Values of every kind that are none of ours.
const std::string foreign = "<key>a</key><date>2024-05-01T14:03:07Z</date><key>b</key><data>AAEC/w==</data>"
                            "<key>c</key><array><real>0.1</real><integer>18446744073709551615</integer>"
                            "<dict><key>\xC3\xA9 &lt;&amp;&#13;</key><false/></dict><dict><key>CF$UID</key>"
                            "<integer>7</integer></dict></array>"
                            "<key>refreshSeconds</key><integer>9</integer>"
                            "<key>refreshSeconds</key><string>9</string>";

class StoreWriter : public ::testing::Test {
protected:
    void hold(const std::string& bytes) {
        m_viewer.change([&](platform::SimulatedViewerState& state) {
            state.suite = storeHolding("");
            state.suite.content = bytes;
        });
    }
    void translate(const std::string& key, const std::string& text) {
        m_viewer.change([&](platform::SimulatedViewerState& state) { state.texts[key] = text; });
    }
    std::string bytes() { return m_viewer.readSuite("")->content; }
    PropertyListObject list() { return std::get<PropertyListObject>(platform::readPropertyList(bytes())); }
    static StoreOutcome change(const std::string& key, const std::string& text) {
        const Setting& setting = *settingNamed(key);
        return changeStore({{&setting, parseSetting(setting, text).value()}});
    }
    static std::string inForm(const std::string& entries, PropertyListForm form) {
        const auto list = platform::readPropertyList(storeHolding(entries).content);
        return std::get<std::string>(platform::writePropertyList(std::get<PropertyListObject>(list), form));
    }

private:
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Viewer> m_scope{m_viewer};
};

TEST_F(StoreWriter, KeepsWhatItDoesNotKnowAndTheForm) {
    for (const PropertyListForm form : {PropertyListForm::xml, PropertyListForm::binary}) {
        hold(inForm(foreign, form));
        EXPECT_TRUE(change("refreshseconds", "2.50").changed);
        EXPECT_TRUE(change("isInactiveRAMHide", "on").changed);
        EXPECT_EQ(platform::formOfPropertyList(bytes()), form);
        EXPECT_EQ(refreshInterval(), 2.5);
        EXPECT_EQ(list().objectForKey("isInactiveRAMHide")->boolean(), true);
        EXPECT_EQ(list().size(), 5U); // the key that stood there twice stands once
        EXPECT_EQ(list().objectForKey("a")->date(), 736'264'987.0);
        EXPECT_EQ(list().objectForKey("b")->data(), std::string_view("\0\1\2\xFF", 4));
        const PropertyListObject array = *list().objectForKey("c");
        EXPECT_EQ(array.at(0)->number(), 0.1);
        EXPECT_EQ(array.at(1)->number(), 18'446'744'073'709'551'615.0);
        EXPECT_EQ(array.at(2)->objectForKey("\xC3\xA9 <&\r")->boolean(), false);
        EXPECT_EQ(array.at(3)->uid(), 7U);

        const std::string before = bytes();
        EXPECT_FALSE(change("refreshSeconds", "2.5").changed); // it says so already
        EXPECT_FALSE(changeStore({{settingNamed("chartcolor")}}).changed);
        EXPECT_EQ(bytes(), before);
        EXPECT_TRUE(
            changeStore({{settingNamed("refreshSeconds")}, {settingNamed("isInactiveRAMHide")}}).changed);
        EXPECT_EQ(list().size(), 3U);
    }
}

TEST_F(StoreWriter, NeverOverwritesWhatHoldsNoPreferences) {
    for (const std::string broken : {"", "bplist00 cut", "<plist version=\"1.0\"><array/></plist>", "[x]"}) {
        hold(broken);
        const StoreOutcome outcome = change("refreshSeconds", "3");
        EXPECT_THAT(outcome.failure.value_or(""), HasSubstr("/store.plist: "));
        EXPECT_TRUE(outcome.couldBeSetAside && !outcome.changed);
        EXPECT_EQ(bytes(), broken);
        EXPECT_FALSE(
            changeStore({{settingNamed("refreshSeconds"), 3.0}}, BrokenStore::setAside).setAside.empty());
        EXPECT_EQ(refreshInterval(), 3.0);
    }
    hold(storeHolding("<key>k</key><data>" + std::string(1'048'200, 'A') + "</data>").content);
    const std::string before = bytes();
    EXPECT_THAT(change("chartcolor", "#102030").failure.value_or(""), HasSubstr("not be under 1 MiB"));
    EXPECT_EQ(bytes(), before);
}

TEST_F(StoreWriter, WritesColoursThatTheWidgetsTake) {
    EXPECT_TRUE(change("chartColor", "#bf5AF2").changed);
    EXPECT_LT(list().objectForKey("chartcolor")->data()->size(), 400U);
    EXPECT_TRUE(storedChartColor() ==
                platform::UIColor::colorWithRed(0xbf / 255.0, 0x5a / 255.0, 0xf2 / 255.0, 1));
    EXPECT_EQ(settingStates().back().text(), "#bf5af2");
    EXPECT_TRUE(change("chartcolor", "#000000").changed); // black is not clear
    EXPECT_TRUE(storedChartColor().has_value());
    EXPECT_TRUE(change("chartcolor", "automatic").changed);
    EXPECT_FALSE(settingStates().back().isStored);
}

TEST_F(StoreWriter, TakesOnlyValuesThatFit) {
    const auto taken = [](const char* key, const std::string& text) {
        const Setting& setting = *settingNamed(key);
        const auto value = parseSetting(setting, text);
        return value ? settingText(setting, *value) : "refused";
    };
    for (const char* const flag : {"true", "on", "1"}) {
        EXPECT_EQ(taken("isInactiveRAMHide", flag), "true");
    }
    EXPECT_EQ(taken("isInactiveRAMHide", "yes"), "refused");
    EXPECT_EQ(taken("refreshSeconds", "0.1"), "0.1");
    EXPECT_EQ(taken("refreshSeconds", "3600"), "3600");
    EXPECT_EQ(taken("refreshSeconds", "0002.50"), "2.5");
    for (const char* const seconds : {"0.09", "3600.1", "-3", "+3", "2,5", " 3", "3 ", "nan", "inf", "0x10",
                                      "1e1", ".5", "5.", "1.2.3", "", "99999999999999999999"}) {
        EXPECT_EQ(taken("refreshSeconds", seconds), "refused") << seconds;
    }
    for (const char* const color :
         {"bf5af2", "#bf5af", "#bf5af22", "#-f5af2", "#bf5ag2", "purple", "clear", ""}) {
        EXPECT_EQ(taken("chartcolor", color), "refused") << color;
    }
    EXPECT_EQ(settingNamed("refreshSecond"), nullptr);
}

TEST_F(StoreWriter, TellsOfStoredValuesThatWereMeantOtherwise) {
    hold(storeHolding(storedArchive("root-string") + "<key>refreshSeconds</key><integer>5</integer>"
                                                     "<key>isInactiveRAMHide</key><string>yes</string>")
             .content);
    const std::vector<SettingState> states = settingStates();
    EXPECT_EQ(states[0].text(), "true");
    EXPECT_EQ(states[0].problem + states[1].problem, "");
    EXPECT_TRUE(states[3].isStored);
    EXPECT_EQ(states[3].text(), "2");
    EXPECT_THAT(states[3].problem, HasSubstr("no text"));
    EXPECT_THAT(states[4].problem, HasSubstr("ends every widget"));
    translate("setting_OTHERCLASS", "{class} statt Farbe");
    EXPECT_EQ(settingStates()[4].problem, "NSString statt Farbe");
}

TEST(DeepLink, OnlyTheFourTextsAreKnown) {
    using namespace DeepLink;
    EXPECT_EQ(targetOf(showCpu), (Target{Page::processor, false, true}));
    EXPECT_EQ(targetOf(showStorage), (Target{Page::storage, false, true}));
    EXPECT_EQ(targetOf(cleanRam), (Target{Page::memory, true, true}));
    EXPECT_EQ(targetOf(showRam), (Target{Page::memory, false, true}));
    for (const std::string_view other :
         {"", "vantor:", "VANTOR://action?cleanRam", "vantor://action?cleanram", "vantor://action/?cleanRam",
          "vantor://action?cleanRam&x", "vantor://action?cleanRam#", "vantor://u@action?cleanRam",
          "vantor://action:1?cleanRam", " vantor://action?cleanRam", "vantor://action?cleanRam\n",
          "vantor://action?emptyTrash", "cleanRam"}) {
        EXPECT_EQ(targetOf(other), Target()) << other;
    }
    EXPECT_EQ(targetOf(std::string_view("vantor://action?cleanRam\0", 25)), Target());
}

} // namespace
