// SPDX-License-Identifier: MIT
#include "controller/Outlet.hpp"

#include "controller/Sections.hpp"
#include "platform/core/FatalStop.hpp"

#include <string>

namespace vantor {

namespace {

/// The name of the outlet that lies at an address of the controller.
std::string_view nameOf(const TEReportTableViewController& controller, const void* outlet) {
    const auto isAt = [&](auto member) { return &(controller.*member) == outlet; };
    for (const Section& section : sections) {
        if (section.chart && isAt(section.chart->view)) {
            return section.chart->name;
        }
        for (const SectionRow& row : section.rows) {
            if (isAt(row.caption.label)) {
                return row.caption.name;
            }
            if (isAt(row.figure.label)) {
                return row.figure.name;
            }
            if (row.stack && isAt(row.stack->stack)) {
                return row.stack->name;
            }
        }
    }
    return "?";
}

} // namespace

void stopWithoutOutlet(const TEReportTableViewController& controller, const void* outlet) {
    platform::fatalStop("the interface file connects nothing to the outlet " +
                        std::string(nameOf(controller, outlet)));
}

} // namespace vantor
