// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"

#include "WidgetStage.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <clocale>
#include <limits>
#include <sstream>

namespace vantor::hosts::terminal {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using tests::WidgetStage;

class Formats : public testing::Test {
protected:
    Formats() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        m_stage.load();
        m_stage.advance(1); // the network's first tick notes the counters
        m_stage.machine.change([](platform::SimulatedState& state) {
            state.interfaces->front().receivedBytes += 2000;
            state.cpuLoad.user += 70;
            state.cpuLoad.nice += 10;
            state.cpuLoad.idle += 20;
        });
        m_stage.advance(1); // the second one, and the interval of the other reports
    }

    [[nodiscard]] Reading reading(std::vector<platform::SourceFailure> failures = {}) const {
        Reading reading = readingOf(*m_stage.controller, std::move(failures),
                                    std::chrono::sys_days(std::chrono::year(2024) / 5 / 1) +
                                        std::chrono::milliseconds(7250));
        reading.host = "box";
        return reading;
    }

    WidgetStage m_stage;
};

TEST_F(Formats, JsonHoldsRecordsLabelsAndCharts) {
    const std::string line = jsonText(reading());
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const json object = json::parse(line);
    EXPECT_EQ(object["schema"], 1);
    EXPECT_EQ(object["host"], "box");
    EXPECT_EQ(object["time"], "2024-05-01T00:00:07.250Z");
    EXPECT_EQ(object["ram"].size(), 10U);
    EXPECT_EQ(object["ram"]["used"], 3'221'225'472);
    EXPECT_EQ(object["ram"]["freeAndInactive"], 2'147'483'648);
    EXPECT_EQ(object["storage"], json({{"mountPoint", nullptr},
                                       {"total", 128'000'000'000},
                                       {"used", 98'000'000'000},
                                       {"free", 30'000'000'000},
                                       {"releasable", 10'000'000'000}}));
    EXPECT_EQ(object["cpu"], json({{"system", 0.0}, {"user", 70.0}, {"idle", 20.0}, {"nice", 10.0}}));
    EXPECT_EQ(object["network"]["lanReceived"], 7'002'000);
    EXPECT_EQ(object["network"]["receivedPerSecond"], 2000);
    EXPECT_EQ(object["network"]["sentPerSecond"], 0);
    EXPECT_EQ(object["labels"].size(), 11U);
    EXPECT_EQ(object["labels"]["usedRAMLabel"], "3 GB");
    EXPECT_EQ(object["labels"]["dataReceivedNETWORKLabel"], "2 KB/s");
    EXPECT_EQ(object["charts"]["ram"], json({{"progress", 0.75}, {"text", "75%"}, {"color", "#FE9226"}}));
    EXPECT_EQ(object["charts"]["cpu"], json({{"progress", 0.8}, {"text", "80%"}, {"color", "#FE9226"}}));
    EXPECT_EQ(object["failed"], json::object());
}

TEST_F(Formats, AFailedSourceIsNamedAndItsFiguresAreNoNumbers) {
    const Reading failed = reading(
        {{platform::Source::storage, "statvfs: \xFF\x1B[2J<b>"}, {platform::Source::network, "netlink"}});
    const json object = json::parse(jsonText(failed));
    EXPECT_EQ(object["failed"]["storage"], "statvfs: \uFFFD\uFFFD[2J<b>");
    EXPECT_TRUE(object["storage"]["total"].is_null());
    EXPECT_TRUE(object["network"]["lanSent"].is_null());
    EXPECT_TRUE(object["charts"]["storage"]["progress"].is_null());
    EXPECT_TRUE(object["charts"]["storage"]["text"].is_null());
    EXPECT_TRUE(object["charts"]["storage"]["color"].is_null());
    EXPECT_TRUE(object["labels"]["usedSTORAGELabel"].is_null());
    EXPECT_EQ(object["ram"]["total"], 4'294'967'296) << "the other sections still appear";

    const std::string prometheus = prometheusText(failed);
    EXPECT_THAT(prometheus, Not(HasSubstr("vantor_storage_")));
    EXPECT_THAT(prometheus, HasSubstr("vantor_source_up{source=\"storage\"} 0\n"));
    EXPECT_THAT(prometheus, Not(HasSubstr("{chart=\"storage\"}")));
    EXPECT_THAT(prometheus, HasSubstr("vantor_ram_free_bytes 1073741824\n"));

    Reading mounted = reading();
    mounted.mountPoint = "/a \\\"b\"";
    EXPECT_THAT(prometheusText(mounted),
                HasSubstr("vantor_storage_free_bytes{mountpoint=\"/a \\\\\\\"b\\\"\"} 30000000000\n"));

    const std::string text = plainText(failed);
    EXPECT_THAT(text, HasSubstr("Not available"));
    EXPECT_THAT(text, Not(HasSubstr("98 GB")));

    const json bar = json::parse(waybarText(failed, platform::Source::storage));
    EXPECT_EQ(bar["text"], "-");
    EXPECT_EQ(bar["class"], "unavailable");
    EXPECT_FALSE(bar.contains("percentage"));
    EXPECT_EQ(json::parse(waybarText(failed, std::nullopt))["class"], json({"orange", "unavailable"}));
    EXPECT_THAT(bar["tooltip"].get<std::string>(), HasSubstr("[2J&lt;b&gt;"));
}

TEST_F(Formats, WaybarShowsTheFullestOrTheFieldAskedFor) {
    const json all = json::parse(waybarText(reading(), std::nullopt));
    EXPECT_EQ(all["text"], "RAM 75%  Storage 77%  CPU 80%");
    EXPECT_EQ(all["alt"], "orange");
    EXPECT_THAT(all["tooltip"].get<std::string>(), HasSubstr("CPU 10.00 % at low priority\n"));
    EXPECT_EQ(all["class"], "orange");
    EXPECT_EQ(all["percentage"], 80);
    EXPECT_THAT(all["tooltip"].get<std::string>(), Not(HasSubstr("Releasable"))) << "the widget hides it";
    EXPECT_EQ(json::parse(waybarText(reading(), platform::Source::memory))["text"], "75%");
    EXPECT_EQ(json::parse(waybarText(reading(), platform::Source::network))["text"],
              "\u2193 2 KB/s  \u2191 0 KB/s");
    EXPECT_EQ(plainText(reading(), platform::Source::processor), "80%\n");
}

TEST(FormatFigures, BandsAreCutAndPercentagesRounded) {
    EXPECT_EQ(levelName(0.509), "green");
    EXPECT_EQ(levelName(0.51), "yellow");
    EXPECT_EQ(levelName(0.835), "orange");
    EXPECT_EQ(levelName(0.84), "red");
    EXPECT_EQ(levelName(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(wholePercent(0.835), 84);
    EXPECT_EQ(wholePercent(7.5), 100);
    EXPECT_EQ(wholePercent(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST_F(Formats, TheTextPageIsAlignedByTheWidthOnScreen) {
    Reading japanese = reading();
    japanese.sections[0].rows[0].caption = "\u4F7F\u7528\u4E2D\u306ERAM";
    japanese.sections[0].rows[1].caption = "\u0627\u0644\u062D\u0631\u0651\u0629";
    std::istringstream page(plainText(japanese));
    int width = 0;
    for (std::string line; std::getline(page, line);) {
        if (line.empty() || line == "Network" || line.ends_with("low priority")) {
            continue;
        }
        width = width == 0 ? displayWidth(line) : width;
        // The mark that keeps a right-to-left caption in its place takes no column; printing makes it
        // visible.
        const bool isMarked = line.find("\u200E") != std::string::npos;
        EXPECT_EQ(displayWidth(line), width + (isMarked ? 1 : 0)) << line;
    }
    EXPECT_GT(width, 20);
}

} // namespace
} // namespace vantor::hosts::terminal
