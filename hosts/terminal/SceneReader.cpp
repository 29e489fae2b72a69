// SPDX-License-Identifier: MIT
#include "hosts/terminal/SceneReader.hpp"

#include "controller/SectionNote.hpp"
#include "controller/Sections.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <utility>

namespace vantor::hosts::terminal {

using platform::NSLocalizedString;
namespace {

Scene::Section shown(const TEReportTableViewController& controller, const Section& section, bool hasFailed) {
    Scene::Section shown;
    shown.name = NSLocalizedString(section.headingKey);
    shown.action = section.source;
    shown.isKnown = !hasFailed && hasFigures(controller, section);
    if (shown.isKnown) {
        shown.note = withoutDirectionMarks(sectionNote(section.source, controller.records()));
    }
    if (const ArcChartView* const chart = chartOf(controller, section)) {
        shown.chart = *chart;
    }
    for (const SectionRow& row : section.rows) {
        if (isShown(controller, row)) {
            shown.rows.push_back({(controller.*row.caption.label)->text(),
                                  hasFailed ? std::string() : (controller.*row.figure.label)->text(),
                                  row.sign, row.asciiSign});
        }
    }
    return shown;
}

std::vector<Scene::Key> keys(bool isExpanded) {
    const auto key = [](char name, std::string_view text, Action action) {
        return Scene::Key{name, NSLocalizedString(text), action};
    };
    std::vector<Scene::Key> keys;
    for (const Section& section : sections) {
        keys.insert(section.chart ? keys.end() : keys.begin(),
                    key(section.action.key, actionCaptionKey(section), section.source));
    }
    const std::string_view mode = isExpanded ? "host_SHOWLESS" : "host_SHOWMORE";
    keys.push_back(key('m', mode, HostAction::changeMode));
    keys.push_back(key('q', "host_QUIT", HostAction::quit));
    return keys;
}

} // namespace

Scene sceneOf(const TEReportTableViewController& controller,
              const std::vector<platform::SourceFailure>& failures, bool isExpanded) {
    Scene scene;
    for (const Section& section : sections) {
        (section.chart ? scene.sections : scene.lines)
            .push_back(shown(controller, section, platform::hasFailed(failures, section.source)));
    }
    scene.keys = keys(isExpanded);
    scene.isExpanded = isExpanded;
    return scene;
}

} // namespace vantor::hosts::terminal
