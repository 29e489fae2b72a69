// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/picture/Scene.hpp"
#include "platform/time/RunLoop.hpp"

#include <optional>
#include <vector>

namespace vantor::terminal {

/// A rectangle of cells that answers to a click.
struct HitArea {
    int column = 0;
    int row = 0;
    int width = 0;
    int height = 0;
    Action action = Action::refresh;
};

/// One picture of the widget.
struct Picture {
    Grid grid;
    std::vector<HitArea> areas;
    double stepsPerUnit = 0; ///< how many dots a chart's end passes from 0 to 1

    /// What a click on a cell asks for.
    [[nodiscard]] std::optional<Action> actionAt(int column, int row) const;
};

/// Draws a scene as it is at an instant. Depends on nothing but its arguments and the locale's table of
/// character widths. The smaller the size, the less is shown: rings with figures, rings, bars, figures, one
/// line, one character; every size has a picture.
[[nodiscard]] Picture drawPicture(const Scene& scene, Size size, const Look& look, platform::Instant now);

/// The next instant after `now` at which a chart's end has moved on by one dot; absent when none moves.
[[nodiscard]] std::optional<platform::Instant> nextStep(const Scene& scene, const Picture& picture,
                                                        platform::Instant now);

} // namespace vantor::terminal
