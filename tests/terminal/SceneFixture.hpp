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
        scene.sections = {
            {"Memory", chart("Used RAM", 0.34), {{"Used RAM", "5.2 GB"}, {"Free RAM", "10.8 GB"}}, memory},
            {"Storage",
             chart("Used", 0.68),
             {{"Used", "348.2 GB"}, {"Free", "163.8 GB"}, {"Total", "512 GB"}},
             storage},
            {"Processor",
             chart("CPU", 0.84),
             {{"User", "61.00 %"}, {"System", "23.00 %"}, {"Idle", "16.00 %"}},
             processor}};
        scene.lines = {{"Network",
                        std::nullopt,
                        {{"Received", "1.2 MB/s", "\u2193", "v"}, {"Sent", "86 KB/s", "\u2191", "^"}},
                        network}};
        scene.keys = {
            {'r', "Refresh", "Refresh", network},        {'c', "Free up memory", "Memory", memory},
            {'s', "Show storage", "Storage", storage},   {'p', "Show processor", "Processor", processor},
            {'m', "Show Less", "Show Less", changeMode}, {'q', "Quit", "Quit", quit}};
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
