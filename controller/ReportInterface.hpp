// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

#include <memory>

namespace vantor {

/// The interface file in code: makes the view tree of a controller and connects its 26 outlets. Frames are
/// the host's to give: it lays out its own widgets of the same names and writes the placeholders' frames
/// back.
class ReportInterface {
public:
    /// A controller whose tree is made when its view is first asked for (`initWithCoder:` and the archive).
    static std::shared_ptr<TEReportTableViewController> instantiate();

    /// Makes the tree: the root holds three placeholders, four columns of captions and figures, and the row
    /// of the releasable storage.
    static void load(TEReportTableViewController& controller);
};

} // namespace vantor
