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

    /// Makes the tree: the root holds the rings' placeholders, the captions and the figures, all side by
    /// side, and a row that a preference hides as a view of its own.
    static void load(TEReportTableViewController& controller);
};

} // namespace vantor
