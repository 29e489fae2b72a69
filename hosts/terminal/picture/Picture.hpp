// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/picture/Scene.hpp"
#include "platform/time/RunLoop.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace vantor::hosts::terminal {

/// A rectangle of cells, measured from the side at which the script starts.
struct Box {
    int column = 0;
    int row = 0;
    int width = 0;
    int height = 1;
    bool operator==(const Box&) const = default;
};

/// A rectangle of cells that answers to a click.
struct HitArea {
    int column = 0;
    int row = 0;
    int width = 0;
    int height = 0;
    Action action;
};

/// Where a chart stands in a picture, alone.
struct ChartPlace {
    std::size_t section = 0;
    Box box;
    bool isBar = false;
    platform::Layers layers = {}; ///< of a ring, as drawn
    bool operator==(const ChartPlace&) const = default;
};

/// One picture of the widget.
struct Picture {
    Grid grid;
    Look look;
    std::vector<HitArea> areas;
    std::vector<ChartPlace> charts;
    double stepsPerUnit = 0; ///< how many dots a chart's end passes from 0 to 1

    /// What a click on a cell asks for.
    [[nodiscard]] std::optional<Action> actionAt(int column, int row) const;
};

/// Draws a scene as it is at an instant. Depends on nothing but its arguments and the locale's table of
/// character widths. The smaller the size, the less is shown: rings with figures, rings, bars, figures, one
/// line, one character; every size has a picture. Rings that stand in `before` as they are to be are taken
/// from there, which changes nothing but the cost.
[[nodiscard]] Picture drawPicture(const Scene& scene, Size size, const Look& look, platform::Instant now,
                                  const Picture& before = {});

/// Brings the charts that move to an instant, in a picture of the same scene and look that was complete when
/// `before` was: the same as drawing it anew, but for the cost.
void stepPicture(Picture& picture, const Scene& scene, const Look& look, platform::Instant before,
                 platform::Instant now);

/// The next instant after `now` at which a chart's end has moved on by one dot; absent when none moves.
[[nodiscard]] std::optional<platform::Instant> nextStep(const Scene& scene, const Picture& picture,
                                                        platform::Instant now);

} // namespace vantor::hosts::terminal
