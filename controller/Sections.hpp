// SPDX-License-Identifier: MIT
#pragma once

#include "controller/Outlets.hpp"
#include "platform/machine/Source.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>

/// What everything on screen is made of. A host, a format and a failure all go by the one table below:
/// another section is another row of it, its outlets and its place in the hosts' forms.
namespace vantor {

/// A caption and its figure.
struct SectionRow {
    LabelOutlet caption;
    LabelOutlet figure;
    std::optional<StackOutlet> stack = std::nullopt; ///< holds both where a preference can hide them
    std::string_view sign = {};                      ///< stands for the caption where room is short
    std::string_view asciiSign = {};                 ///< and where there is nothing but ASCII
};

struct Section {
    platform::Source source;          ///< what cannot be read when the section has no figures
    std::string_view mark;            ///< its short word for programs: on command lines and for its ring
    std::string_view heading;         ///< the label of a host's form that shows its name
    std::string_view headingKey;      ///< of its name in the user's language
    std::optional<ChartOutlet> chart; ///< its ring
    std::span<const SectionRow> rows; ///< in reading order
    ActionOutlet action;              ///< what a press on it asks for
};

#define VANTOR_OUTLET(name) #name, &TEReportTableViewController::name
#define VANTOR_LABEL(name) LabelOutlet(VANTOR_OUTLET(name))
#define VANTOR_ROW(stem) VANTOR_LABEL(stem##TitleLabel), VANTOR_LABEL(stem##Label)

inline constexpr SectionRow memoryRows[]{{VANTOR_ROW(usedRAM)}, {VANTOR_ROW(freeRAM)}};
inline constexpr SectionRow storageRows[]{
    {VANTOR_ROW(usedSTORAGE)},
    {VANTOR_ROW(freeSTORAGE)},
    {VANTOR_ROW(totalSTORAGE)},
    {VANTOR_ROW(releasableSTORAGE), StackOutlet{VANTOR_OUTLET(releasableSTORAGEStackView)}},
};
inline constexpr SectionRow processorRows[]{
    {VANTOR_ROW(userCPU)}, {VANTOR_ROW(systemCPU)}, {VANTOR_ROW(inactiveCPU)}};
inline constexpr SectionRow networkRows[]{{VANTOR_ROW(dataReceivedNETWORK), std::nullopt, "\u2193", "v"},
                                          {VANTOR_ROW(dataSentNETWORK), std::nullopt, "\u2191", "^"}};

inline constexpr std::array<Section, 4> sections{{
    {platform::Source::memory,
     "ram",
     "memoryHeading",
     "host_MEMORY",
     ChartOutlet{VANTOR_OUTLET(progressRAMView), &TEReportTableViewController::ramChartView},
     memoryRows,
     {VANTOR_OUTLET(cleanRam), "host_CLEANRAM", 'c'}},
    {platform::Source::storage,
     "storage",
     "storageHeading",
     "host_STORAGE",
     ChartOutlet{VANTOR_OUTLET(progressSTORAGEView), &TEReportTableViewController::storateChartView},
     storageRows,
     {VANTOR_OUTLET(openApp), "host_OPENSTORAGE", 's'}},
    {platform::Source::processor,
     "cpu",
     "processorHeading",
     "host_PROCESSOR",
     ChartOutlet{VANTOR_OUTLET(progressCPUView), &TEReportTableViewController::cpuChartView},
     processorRows,
     {VANTOR_OUTLET(showCpuChart), "host_SHOWCPU", 'p'}},
    {platform::Source::network,
     "network",
     "networkHeading",
     "host_NETWORK",
     std::nullopt,
     networkRows,
     {VANTOR_OUTLET(manualInfoRefresh), "host_REFRESH", 'r'}},
}};

#undef VANTOR_ROW
#undef VANTOR_LABEL
#undef VANTOR_OUTLET

/// The section of a source; null for the preferences, which no section shows.
[[nodiscard]] constexpr const Section* sectionOf(platform::Source source) {
    const auto found = std::ranges::find(sections, source, &Section::source);
    return found == sections.end() ? nullptr : &*found;
}

/// Whether no preference hides a row. The view is loaded; main thread.
[[nodiscard]] bool isShown(const TEReportTableViewController& controller, const SectionRow& row);

/// Whether a section has been reported since the view was loaded. Main thread.
[[nodiscard]] bool hasFigures(const TEReportTableViewController& controller, const Section& section);

/// The key of what a section's action is called: as the preferences have it at the moment, memory is freed,
/// or only shown in the app. Any thread.
[[nodiscard]] std::string_view actionCaptionKey(const Section& section);

/// A section's ring as it is now; null where it has none. Main thread.
[[nodiscard]] const ArcChartView* chartOf(const TEReportTableViewController& controller,
                                          const Section& section);

} // namespace vantor
