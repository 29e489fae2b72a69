// SPDX-License-Identifier: MIT
#include "controller/ReportInterface.hpp"

#include "controller/Sections.hpp"

namespace vantor {

using platform::UILabel;
using platform::UIStackView;
using platform::UIView;

namespace {

/// A new view in the tree, connected to its outlet.
template<class View>
std::shared_ptr<View> connect(std::shared_ptr<View>& outlet, UIView& above) {
    outlet = std::make_shared<View>();
    above.addSubview(outlet);
    return outlet;
}

void loadRow(TEReportTableViewController& controller, const SectionRow& row, UIView& root) {
    if (!row.stack) {
        connect(controller.*row.caption.label, root);
        connect(controller.*row.figure.label, root);
        return;
    }
    const auto stack = connect(controller.*row.stack->stack, root);
    stack->setHidden(true); // until a report has read the preference
    for (const LabelOutlet& outlet : {row.caption, row.figure}) {
        controller.*outlet.label = std::make_shared<UILabel>();
        stack->addArrangedSubview(controller.*outlet.label);
    }
}

} // namespace

std::shared_ptr<TEReportTableViewController> ReportInterface::instantiate() {
    auto controller = std::make_shared<TEReportTableViewController>(platform::NSCoder{});
    controller->setViewLoader([bare = controller.get()] { load(*bare); });
    return controller;
}

void ReportInterface::load(TEReportTableViewController& controller) {
    const auto root = std::make_shared<UIView>();
    for (const Section& section : sections) {
        if (section.chart) {
            connect(controller.*section.chart->view, *root);
        }
        for (const SectionRow& row : section.rows) {
            loadRow(controller, row, *root);
        }
    }
    controller.setView(root);
}

} // namespace vantor
