// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "hosts/terminal/picture/Scene.hpp"

namespace vantor::hosts::terminal {

/// The scene that a controller's view tree holds: its labels' texts, its charts, the keys with their words in
/// the user's language. Main thread; the view is loaded.
[[nodiscard]] Scene sceneOf(const TEReportTableViewController& controller, bool isExpanded);

} // namespace vantor::hosts::terminal
