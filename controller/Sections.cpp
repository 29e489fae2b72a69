// SPDX-License-Identifier: MIT
#include "controller/Sections.hpp"

#include "settings/SharedStore.hpp"

namespace vantor {

bool isShown(const TEReportTableViewController& controller, const SectionRow& row) {
    return !row.stack || !(controller.*row.stack->stack)->isHidden();
}

const ArcChartView* chartOf(const TEReportTableViewController& controller, const Section& section) {
    if (!section.chart) {
        return nullptr;
    }
    const auto& container = (controller.*section.chart->chart)();
    return container != nullptr && container->hostingController()->rootView()
               ? &*container->hostingController()->rootView()
               : nullptr;
}

std::string_view actionCaptionKey(const Section& section) {
    const bool onlyShows =
        section.source == platform::Source::memory && sharedFlag(SettingsKey::preventCleanRAMFromWidget);
    return onlyShows ? "host_SHOWRAM" : section.action.captionKey;
}

bool hasFigures(const TEReportTableViewController& controller, const Section& section) {
    return std::ranges::none_of(section.rows, [&controller](const SectionRow& row) {
        return (controller.*row.figure.label)->text().empty();
    });
}

} // namespace vantor
