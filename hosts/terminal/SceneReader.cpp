// SPDX-License-Identifier: MIT
#include "hosts/terminal/SceneReader.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

#include <utility>

namespace vantor::hosts::terminal {

using platform::NSLocalizedString;
using Label = TEReportTableViewController::Label;

namespace {

using Rows = std::vector<Scene::Row>;

Scene::Row row(const Label& caption, const Label& figure) {
    return {caption->text(), figure->text()};
}

Scene::Section section(std::string_view nameKey,
                       const std::shared_ptr<TEReportTableViewController::ChartContainer>& chart, Rows rows,
                       Action action) {
    Scene::Section section{NSLocalizedString(nameKey), std::nullopt, std::move(rows), action};
    if (chart != nullptr) {
        section.chart = chart->hostingController()->rootView();
    }
    return section;
}

std::vector<Scene::Key> keys(bool isExpanded) {
    const auto key = [](char name, std::string_view text, std::string_view shortText, Action action) {
        return Scene::Key{name, NSLocalizedString(text), NSLocalizedString(shortText), action};
    };
    const std::string_view mode = isExpanded ? "host_SHOWLESS" : "host_SHOWMORE";
    return {key('r', "host_REFRESH", "host_REFRESH", Action::refresh),
            key('c', "host_CLEANRAM", "host_MEMORY", Action::cleanRam),
            key('s', "host_OPENSTORAGE", "host_STORAGE", Action::openApp),
            key('p', "host_SHOWCPU", "host_PROCESSOR", Action::showCpuChart),
            key('m', mode, mode, Action::changeMode),
            key('q', "host_QUIT", "host_QUIT", Action::quit)};
}

} // namespace

Scene sceneOf(const TEReportTableViewController& controller, bool isExpanded) {
    const auto& c = controller;
    Scene scene;
    scene.sections[0] =
        section("host_MEMORY", c.ramChartView(),
                {row(c.usedRAMTitleLabel, c.usedRAMLabel), row(c.freeRAMTitleLabel, c.freeRAMLabel)},
                Action::cleanRam);
    Rows storage{row(c.totalSTORAGETitleLabel, c.totalSTORAGELabel),
                 row(c.usedSTORAGETitleLabel, c.usedSTORAGELabel),
                 row(c.freeSTORAGETitleLabel, c.freeSTORAGELabel)};
    if (!c.releasableSTORAGEStackView->isHidden()) {
        storage.push_back(row(c.releasableSTORAGETitleLabel, c.releasableSTORAGELabel));
    }
    scene.sections[1] = section("host_STORAGE", c.storateChartView(), std::move(storage), Action::openApp);
    scene.sections[2] =
        section("host_PROCESSOR", c.cpuChartView(),
                {row(c.userCPUTitleLabel, c.userCPULabel), row(c.systemCPUTitleLabel, c.systemCPULabel),
                 row(c.inactiveCPUTitleLabel, c.inactiveCPULabel)},
                Action::showCpuChart);
    scene.network = section("host_NETWORK", nullptr,
                            {row(c.dataReceivedNETWORKTitleLabel, c.dataReceivedNETWORKLabel),
                             row(c.dataSentNETWORKTitleLabel, c.dataSentNETWORKLabel)},
                            Action::refresh);
    scene.keys = keys(isExpanded);
    scene.isExpanded = isExpanded;
    return scene;
}

} // namespace vantor::hosts::terminal
