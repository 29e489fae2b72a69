// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "hosts/terminal/picture/Scene.hpp"
#include "platform/machine/Source.hpp"

#include <vector>

namespace vantor::hosts::terminal {

/// The scene that a controller's view tree holds: its labels' texts, its charts, the keys with their words in
/// the user's language. A section whose source is among the failures has no figure in it. Main thread; the
/// view is loaded.
[[nodiscard]] Scene sceneOf(const TEReportTableViewController& controller,
                            const std::vector<platform::SourceFailure>& failures, bool isExpanded);

} // namespace vantor::hosts::terminal
