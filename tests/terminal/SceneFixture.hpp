// SPDX-License-Identifier: MIT
#pragma once

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
    hosts::terminal::Scene scene;

    SceneFixture() {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        platform::RunLoop::main().turn(std::chrono::steady_clock::now()); // all rings set out at one instant
        using Action = hosts::terminal::Action;
        scene.sections[0] = {"Memory",
                             chart("Used RAM", 0.34),
                             {{"Used RAM", "5.2 GB"}, {"Free RAM", "10.8 GB"}},
                             Action::cleanRam};
        scene.sections[1] = {"Storage",
                             chart("Used", 0.68),
                             {{"Total", "512 GB"}, {"Used", "348.2 GB"}, {"Free", "163.8 GB"}},
                             Action::openApp};
        scene.sections[2] = {"Processor",
                             chart("CPU", 0.84),
                             {{"User", "61.00 %"}, {"System", "23.00 %"}, {"Idle", "16.00 %"}},
                             Action::showCpuChart};
        scene.network.name = "Network";
        scene.network.rows = {{"Received", "1.2 MB/s"}, {"Sent", "86 KB/s"}};
        scene.keys = {{'r', "Refresh", "Refresh", Action::refresh},
                      {'c', "Free up memory", "Memory", Action::cleanRam},
                      {'s', "Show storage", "Storage", Action::openApp},
                      {'p', "Show processor", "Processor", Action::showCpuChart},
                      {'m', "Show Less", "Show Less", Action::changeMode},
                      {'q', "Quit", "Quit", Action::quit}};
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
    static platform::Instant rest() { return std::chrono::steady_clock::now() + std::chrono::hours(1); }
};

} // namespace vantor::tests
