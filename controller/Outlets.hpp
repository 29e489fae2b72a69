// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

#include <string_view>

/// The outlets and actions of the controller with their names, by which an interface file, a host's own
/// widgets and a program that reads figures find them. Sections.hpp lists them.
namespace vantor {

struct LabelOutlet {
    std::string_view name;
    std::shared_ptr<platform::UILabel> TEReportTableViewController::*label;
};

/// The place of a ring, with the chart that stands in it once the view is loaded.
struct ChartOutlet {
    std::string_view name;
    std::shared_ptr<platform::UIView> TEReportTableViewController::*view;
    const std::shared_ptr<TEReportTableViewController::ChartContainer>& (
        TEReportTableViewController::*chart)() const;
};

struct StackOutlet {
    std::string_view name;
    std::shared_ptr<platform::UIStackView> TEReportTableViewController::*stack;
};

struct ActionOutlet {
    std::string_view name;
    void (TEReportTableViewController::*action)(TEReportTableViewController::Sender);
    std::string_view captionKey; ///< the key of its button's text
    char key;                    ///< what to press for it on a terminal
};

} // namespace vantor
