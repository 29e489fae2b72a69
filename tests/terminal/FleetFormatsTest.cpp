// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/FleetReport.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <clocale>
#include <cmath>
#include <sstream>

namespace vantor::hosts::terminal {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

platform::FleetMachine machine(const char* name, std::optional<double> memory, std::size_t source = 0) {
    platform::FleetMachine made;
    made.key = std::string(name) + ":9100";
    made.name = name;
    made.source = source;
    made.figures.at(0) = memory;
    made.taken = 91s;
    return made;
}

class FleetFormats : public testing::Test {
protected:
    FleetFormats() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        auto snapshot = std::make_shared<platform::FleetSnapshot>();
        snapshot->sources = {{"home", 5s, 15s, 98s, {}, false},
                             {"prod", 15s, 45s, 10s, "answered 503", true}};
        platform::FleetMachine down = machine("db03", 0.4);
        down.downSince = std::chrono::sys_days(std::chrono::year(2024) / 5 / 1);
        down.problem = "connection refused";
        platform::FleetMachine full = machine("db<7>\"\\", 0.61);
        full.figures = {0.61, 0.97, NAN, 1.2e6, std::nullopt};
        full.volume = "/srv";
        full.labels = std::make_shared<const std::vector<std::pair<std::string, std::string>>>(
            std::vector<std::pair<std::string, std::string>>{{"dc", "fra"}});
        platform::FleetMachine silent = machine("new", std::nullopt);
        silent.taken.reset();
        platform::FleetMachine old = machine("old", 0.3);
        old.taken = 70s;
        platform::FleetMachine lost = machine("web", 0.99, 1);
        lost.taken = 10s;
        snapshot->machines = {down, full, silent, old, lost};
        m_table.take(std::move(snapshot), 100s);
    }

    [[nodiscard]] FleetReport report() const {
        return {"all", m_table, 100s, std::chrono::sys_days(std::chrono::year(2024) / 5 / 1) + 7250ms};
    }

    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Viewer> m_current{m_viewer};
    fleet::FleetTable m_table;
};

TEST_F(FleetFormats, TextIsATable) {
    std::istringstream text(fleetText(report()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    ASSERT_EQ(lines.size(), 11U);
    EXPECT_EQ(lines[1], "3 of 5 · 1 down · 1 red · 2 stale · 1 unknown · worst db<7>\"\\ Storage 97%");
    EXPECT_EQ(lines[2], "5 s average · 2 s old");
    EXPECT_EQ(lines[3], "prod: answered 503");
    EXPECT_THAT(lines[6], HasSubstr("× db03"));
    EXPECT_THAT(lines[6], HasSubstr(": connection refused"));
    EXPECT_EQ(lines[7], "  db<7>\"\\  61%      97% /srv    –  1.2 MB/s  –  9 s old");
    EXPECT_EQ(lines[8], "– new        –        –         –         –  –");
    EXPECT_EQ(lines[9], "~ old      30%        –         –         –  –  30 s old");
}

TEST_F(FleetFormats, JsonTellsWhatIsKnownAndNothingElse) {
    const std::string line = fleetJson(report());
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const json object = json::parse(line);
    EXPECT_EQ(object["counts"]["answering"], 3);
    EXPECT_EQ(object["worst"]["figure"], "storage");
    EXPECT_EQ(object["sources"][1]["isSilent"], true);
    const json& full = object["machines"][1];
    EXPECT_EQ(full["machine"], "db<7>\"\\");
    EXPECT_EQ(full["state"], "up");
    EXPECT_EQ(full["sampled"], "2024-04-30T23:59:58.250Z");
    EXPECT_EQ(full["ageSeconds"], 9.0);
    EXPECT_EQ(full["labels"], json({{"dc", "fra"}}));
    EXPECT_TRUE(full["cpu"].is_null() && full["sentPerSecond"].is_null());
    std::vector<std::string> states;
    for (const json& one : object["machines"]) {
        states.push_back(one["state"]);
    }
    EXPECT_EQ(states, (std::vector<std::string>{"down", "up", "unknown", "stale", "stale"}));
    EXPECT_TRUE(object["machines"][0]["ram"].is_null()) << "who is down has no figure of now";
}

TEST_F(FleetFormats, WaybarShowsTheWorst) {
    const json object = json::parse(fleetWaybar(report()));
    EXPECT_EQ(object["text"], "1 down  db&lt;7&gt;\"\\ Storage 97%");
    EXPECT_EQ(object["class"], json({"down", "unavailable"}));
    EXPECT_EQ(object["percentage"], 97);
    EXPECT_THAT(object["tooltip"], HasSubstr("\n× db03  down since "));
    EXPECT_THAT(object["tooltip"], HasSubstr("\nprod: answered 503"));
    m_table.take(nullptr, 100s);
    EXPECT_EQ(json::parse(fleetWaybar(report()))["class"], "unavailable");
}

TEST_F(FleetFormats, PrometheusLeavesOutWhatIsNotOfNow) {
    const std::string text = fleetPrometheus(report());
    const std::string labels = R"({machine="db<7>\"\\",source="home",key="db<7>\"\\:9100")";
    EXPECT_THAT(text, HasSubstr("\nvantor_fleet_ram_used_ratio" + labels + "} 0.61\n"));
    EXPECT_THAT(text,
                HasSubstr("\nvantor_fleet_storage_used_ratio" + labels + R"(,mountpoint="/srv"} 0.97)"));
    EXPECT_THAT(text,
                HasSubstr("vantor_fleet_machine_up{machine=\"db03\",source=\"home\",key=\"db03:9100\"} 0"));
    EXPECT_THAT(text, Not(HasSubstr("vantor_fleet_ram_used_ratio{machine=\"db03\"")));
    EXPECT_THAT(text, Not(HasSubstr("NaN")));
    EXPECT_THAT(text, HasSubstr("vantor_fleet_source_up{source=\"prod\"} 0"));
}

} // namespace
} // namespace vantor::hosts::terminal
