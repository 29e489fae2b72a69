// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

#include <memory>

namespace vantor {

/// Ends the program with the name of the outlet that lies at an address of the controller.
[[noreturn]] void stopWithoutOutlet(const TEReportTableViewController& controller, const void* outlet);

/// A view of the controller that the interface file must have connected; a null one is fatal.
template<class View>
[[nodiscard]] const std::shared_ptr<View>& outlet(const TEReportTableViewController& controller,
                                                  const std::shared_ptr<View>& view) {
    if (view == nullptr) {
        stopWithoutOutlet(controller, &view);
    }
    return view;
}

} // namespace vantor
