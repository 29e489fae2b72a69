// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Layout.hpp"
#include "hosts/terminal/picture/Scene.hpp"
#include "hosts/terminal/picture/Sheet.hpp"
#include "platform/time/RunLoop.hpp"

/// The parts that a picture is put together from. Each draws into its box and registers what can be clicked.
namespace vantor::hosts::terminal {

/// In place of a figure that there is none of.
inline constexpr const char* noFigure = "-";

/// Charts are asked for their layers in a rectangle of the size that they have in a window, so that their
/// lines keep their proportions.
inline constexpr platform::CGRect ringRect{{0, 0}, {90, 80}};
/// The layers of a chart in `ringRect`, as a ring in a box that is twice as wide as high, its caption in the
/// last row. `lineWidth` is that of the thick stroke, in points.
void drawRingLayers(Sheet& sheet, const platform::Layers& layers, const Box& box, double lineWidth);

/// A chart in its place: a ring with percentage and caption, centred in its box, or a bar that fills it.
[[nodiscard]] platform::Layers ringLayers(const Scene::Section& section, platform::Instant now);
void drawRing(Sheet& sheet, const Scene::Section& section, const ChartPlace& place);
void drawBar(Sheet& sheet, const Scene::Section& section, const Box& box, platform::Instant now);

/// A section's name, centred or at the leading side, and beside it what there is to add, as far as it fits.
void drawHeading(Sheet& sheet, const Scene::Section& section, const Box& box, Align align);

/// The captions and figures of a section, one line each, from a box's first row on.
void drawRows(Sheet& sheet, const Scene::Section& section, Box box);

/// The sections without a ring, each with its figures side by side, centred in a row of its own.
void drawLines(Sheet& sheet, const Scene& scene, Box box);

/// How many rows the keys take at a width, of `most` at most.
[[nodiscard]] int keyRows(const std::vector<Scene::Key>& keys, int width, int most);
/// The notice, or the keys and what they do, as many as fit into the box's rows.
void drawKeys(Sheet& sheet, const std::vector<Scene::Key>& keys, const std::string& notice, const Box& box);

/// The arrangements with rings; `top` is the first row.
void drawRings(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now);

/// One line for each chart: a bar between title and percentage, or what of it fits; where the layout has
/// them, with the section's figures below.
void drawBars(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now);

/// Everything in one line or two, or what of it fits.
void drawLine(Sheet& sheet, const Scene& scene, const Layout& layout, int row);

} // namespace vantor::hosts::terminal
