// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

#include <array>
#include <string_view>

/// The outlets and actions by name, so that an interface file, a host's own widgets and a report can be bound
/// to them without naming each one again.
namespace vantor {

struct LabelOutlet {
    std::string_view name;
    std::shared_ptr<platform::UILabel> TEReportTableViewController::*label;
};

struct ViewOutlet {
    std::string_view name;
    std::shared_ptr<platform::UIView> TEReportTableViewController::*view;
    const std::shared_ptr<TEReportTableViewController::ChartContainer>& (
        TEReportTableViewController::*chart)() const;
};

struct ActionOutlet {
    std::string_view name;
    void (TEReportTableViewController::*action)(TEReportTableViewController::Sender);
};

#define VANTOR_OUTLET(name)                                                                                  \
    { #name, &TEReportTableViewController::name }

/// The labels, captions (…TitleLabel) and figures.
inline constexpr std::array<LabelOutlet, 22> labelOutlets{{
    VANTOR_OUTLET(freeRAMTitleLabel),
    VANTOR_OUTLET(usedRAMTitleLabel),
    VANTOR_OUTLET(freeRAMLabel),
    VANTOR_OUTLET(usedRAMLabel),
    VANTOR_OUTLET(totalSTORAGETitleLabel),
    VANTOR_OUTLET(usedSTORAGETitleLabel),
    VANTOR_OUTLET(freeSTORAGETitleLabel),
    VANTOR_OUTLET(releasableSTORAGETitleLabel),
    VANTOR_OUTLET(totalSTORAGELabel),
    VANTOR_OUTLET(usedSTORAGELabel),
    VANTOR_OUTLET(freeSTORAGELabel),
    VANTOR_OUTLET(releasableSTORAGELabel),
    VANTOR_OUTLET(userCPUTitleLabel),
    VANTOR_OUTLET(systemCPUTitleLabel),
    VANTOR_OUTLET(inactiveCPUTitleLabel),
    VANTOR_OUTLET(userCPULabel),
    VANTOR_OUTLET(systemCPULabel),
    VANTOR_OUTLET(inactiveCPULabel),
    VANTOR_OUTLET(dataSentNETWORKTitleLabel),
    VANTOR_OUTLET(dataReceivedNETWORKTitleLabel),
    VANTOR_OUTLET(dataSentNETWORKLabel),
    VANTOR_OUTLET(dataReceivedNETWORKLabel),
}};

/// The ring placeholders, each with the chart that stands in it once the view is loaded.
inline constexpr std::array<ViewOutlet, 3> chartOutlets{{
    {"progressRAMView", &TEReportTableViewController::progressRAMView,
     &TEReportTableViewController::ramChartView},
    {"progressSTORAGEView", &TEReportTableViewController::progressSTORAGEView,
     &TEReportTableViewController::storateChartView},
    {"progressCPUView", &TEReportTableViewController::progressCPUView,
     &TEReportTableViewController::cpuChartView},
}};

/// The row that a preference hides: caption and figure of the releasable storage.
inline constexpr std::string_view releasableRowName = "releasableSTORAGEStackView";

inline constexpr std::array<ActionOutlet, 4> actionOutlets{{
    VANTOR_OUTLET(manualInfoRefresh),
    VANTOR_OUTLET(cleanRam),
    VANTOR_OUTLET(openApp),
    VANTOR_OUTLET(showCpuChart),
}};

#undef VANTOR_OUTLET

} // namespace vantor
