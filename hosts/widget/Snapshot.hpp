// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/widget/Options.hpp"

namespace vantor::hosts::widget {

/// Draws the widget into the file of `options.snapshot`: waits until every section holds figures (two
/// seconds, or under four where a source does not answer), then writes the picture in one piece, so that
/// there is never half a file. The exit status of the program: 1 when the file cannot be written, which is
/// said on standard error, and when a source cannot be read, which the picture shows. A machine and a viewer
/// are in place and an application object exists; `node` is that machine where it is not this one.
[[nodiscard]] int writeSnapshot(const Options& options, const common::RemoteNode* node = nullptr);

/// The same of a wall, 1200 points wide and as high as all of its machines need: waits until each has
/// answered or failed to, for fifteen seconds at most. 1 also when a source of machines does not answer.
[[nodiscard]] int writeWall(const Options& options, common::FleetHost& fleet);

} // namespace vantor::hosts::widget
