// SPDX-License-Identifier: MIT
#include "controller/ReportInterface.hpp"

#include "controller/Outlets.hpp"

namespace vantor {

using platform::UILabel;
using platform::UIStackView;
using platform::UIView;

std::shared_ptr<TEReportTableViewController> ReportInterface::instantiate() {
    auto controller = std::make_shared<TEReportTableViewController>(platform::NSCoder{});
    controller->setViewLoader([bare = controller.get()] { load(*bare); });
    return controller;
}

void ReportInterface::load(TEReportTableViewController& controller) {
    const auto root = std::make_shared<UIView>();
    const auto releasable = std::make_shared<UIStackView>();
    releasable->setHidden(true); // until a report says that it is wanted
    root->addSubview(releasable);
    controller.releasableSTORAGEStackView = releasable;
    for (const ViewOutlet& outlet : chartOutlets) {
        const auto placeholder = std::make_shared<UIView>();
        root->addSubview(placeholder);
        controller.*outlet.view = placeholder;
    }
    for (const LabelOutlet& outlet : labelOutlets) {
        const auto label = std::make_shared<UILabel>();
        if (outlet.name.starts_with("releasable")) {
            releasable->addArrangedSubview(label);
        } else {
            root->addSubview(label);
        }
        controller.*outlet.label = label;
    }
    controller.setView(root);
}

} // namespace vantor
