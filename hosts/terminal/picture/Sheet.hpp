// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/picture/Picture.hpp"

#include <string_view>

namespace vantor::hosts::terminal {

enum class Align : std::uint8_t { leading, center, trailing };

/// A picture in the making. Places are given as if everything ran from left to right; for a script that runs
/// the other way the sheet mirrors them.
class Sheet {
public:
    Sheet(Picture& picture, const Look& look, const Picture* before = nullptr)
        : m_picture(picture), m_before(before), m_look(look) {}

    [[nodiscard]] const Look& look() const { return m_look; }
    [[nodiscard]] Size size() const { return m_picture.grid.size(); }
    [[nodiscard]] Grid& grid() { return m_picture.grid; }

    /// A text in a box of one row; cut with an ellipsis where it does not fit.
    void text(const Box& box, std::string_view text, Align align, const Ink& ink);
    /// One character, at a distance from the box's leading side.
    void put(const Box& box, int offset, char32_t character, const Ink& ink);
    void clickable(const Box& box, Action action);
    /// The column, counted from the left, at which a box stands in the grid.
    [[nodiscard]] int leftOf(const Box& box) const;
    /// Takes a chart's cells from the picture before, if it stands there as it is to be.
    [[nodiscard]] bool takeFromBefore(const ChartPlace& place);
    /// Notes where a chart stands and how many dots its end passes from 0 to 1.
    void chartAt(const ChartPlace& place, double stepsPerUnit);

private:
    Picture& m_picture;
    const Picture* m_before;
    Look m_look;
};

/// The inks of everything that is not a chart.
[[nodiscard]] Ink captionInk(const Look& look);
[[nodiscard]] Ink strongInk();

} // namespace vantor::hosts::terminal
