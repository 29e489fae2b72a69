// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "hosts/terminal/screen/Capabilities.hpp"

#include <string>

namespace vantor::hosts::terminal {

/// Turns pictures into bytes for the terminal. It knows what the terminal shows and writes only the cells
/// that are different. Every byte comes from the terminal database, a number or a cell's character.
class ScreenWriter {
public:
    ScreenWriter(const Terminfo& terminal, ColorDepth depth) : m_terminal(terminal), m_depth(depth) {}

    /// The bytes that bring the terminal from what it shows to a picture; none when nothing changed. On a
    /// terminal that cannot address its cells the first row is printed over the last one.
    [[nodiscard]] std::string update(const Grid& picture);

    /// The terminal's content is not what was written any more: the next update clears it first.
    void forget() { m_shown = {}; }

private:
    void writeRun(std::string& bytes, const Grid& picture, int column, int end, int row);
    void setInk(std::string& bytes, const Ink& ink);
    [[nodiscard]] std::string colorOf(const Ink& ink) const;
    [[nodiscard]] std::string groundOf(const Ink& ink) const;

    const Terminfo& m_terminal;
    ColorDepth m_depth;
    Grid m_shown;
    Ink m_ink; ///< what the terminal writes with at present
};

} // namespace vantor::hosts::terminal
