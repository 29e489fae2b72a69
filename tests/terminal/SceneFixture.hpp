// SPDX-License-Identifier: MIT
#pragma once

#include "HandTurnedQueue.hpp"
#include "hosts/terminal/picture/Scene.hpp"
#include "platform/simulated/SimulatedViewer.hpp"

#include <chrono>
#include <clocale>
#include <memory>
#include <numbers>
#include <string>

namespace vantor::tests {

/// A viewer without preferences and a scene with round figures, in a locale that knows all widths.
struct SceneFixture {
    platform::SimulatedViewer viewer;
    platform::Current<platform::Viewer> scope{viewer};
    HandTurnedClock clock; // all rings set out at one instant
    hosts::terminal::Scene scene;

    SceneFixture() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        using enum hosts::terminal::HostAction;
        using enum platform::Source;
        scene.host = "demo";
        scene.sections = {
            section("RAM", chart("Used RAM", 0.34), {{"Used RAM", "5.2 GB"}, {"Free RAM", "10.8 GB"}},
                    memory),
            section("Storage", chart("Used storage", 0.68),
                    {{"Used storage", "348.2 GB"}, {"Free storage", "163.8 GB"}, {"Total storage", "512 GB"}},
                    storage),
            section("CPU", chart("CPU load", 0.84),
                    {{"User", "61.00 %"}, {"System", "23.00 %"}, {"Idle", "16.00 %"}}, processor)};
        scene.sections[0].note = "of 16 GB";
        scene.lines = {section("Network", std::nullopt,
                               {{"Received", "1.2 MB/s", "\u2193", "v"}, {"Sent", "86 KB/s", "\u2191", "^"}},
                               network)};
        scene.keys = {{'r', "Refresh", network},      {'c', "Free Up Memory", memory},
                      {'s', "Show Storage", storage}, {'p', "CPU Chart", processor},
                      {'m', "Show Less", changeMode}, {'q', "Quit", quit}};
    }

    static hosts::terminal::Scene::Section section(std::string name, std::optional<ArcChartView> chart,
                                                   std::vector<hosts::terminal::Scene::Row> rows,
                                                   platform::Source source) {
        hosts::terminal::Scene::Section section;
        section.name = std::move(name);
        section.chart = std::move(chart);
        section.rows = std::move(rows);
        section.action = source;
        return section;
    }

    static ArcChartView chart(std::string title, double progress) {
        ArcChartView chart;
        chart.arcChartViewModel = std::make_shared<ArcChartViewModel>();
        chart.arcChartViewModel->setProgress(progress);
        chart.startAngle = {3 * std::numbers::pi / 4};
        chart.endAngle = {std::numbers::pi / 4};
        chart.outerRingLineWidth = 2;
        chart.outerRingOpacity = 0.3;
        chart.innerRingLineWidth = 10;
        chart.title = std::move(title);
        chart.titleTopPadding = 8;
        return chart;
    }

    /// An instant at which all rings have come to rest.
    [[nodiscard]] platform::Instant rest() const { return clock.now() + std::chrono::hours(1); }
};

} // namespace vantor::tests
