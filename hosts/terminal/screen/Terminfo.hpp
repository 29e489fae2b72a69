// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::hosts::terminal {

/// What the terminal database (terminfo) knows of the terminal that TERM names.
///
/// Only the database is taken from ncurses, not its screens: they hold three copies of every cell, know no
/// 24-bit colours beside an indexed palette, and touch the terminal where a fatal stop must not. Our own grid
/// is compared instead, and the changed cells are written with the strings from here.
class Terminfo {
public:
    /// Reads the entry for TERM, for a name that the database does not know the one of xterm with 256
    /// colours. Without a name, or with "dumb", everything is as on a terminal that can do nothing but print.
    /// Main thread, once.
    static Terminfo fromEnvironment();

    bool canAddress = false; ///< the cursor can be put anywhere and the screen cleared
    int colors = 0;
    bool hasDirectColor = false; ///< says so itself (RGB or Tc), without COLORTERM
    bool hasMouse = false;       ///< understands xterm's mouse reports
    bool wrapsAtOnce = false;    ///< scrolls when the last cell of the screen is written

    std::string enter; ///< to the alternate screen, cursor hidden, no automatic margins
    std::string leave; ///< and back
    std::string clear, plain, bold, dim, reverse;

    [[nodiscard]] std::string moveTo(int column, int row) const;
    /// Sets a foreground colour of the palette; by the ANSI codes where the database knows fewer.
    [[nodiscard]] std::string foreground(int index) const;
    /// The same for the background.
    [[nodiscard]] std::string background(int index) const;

private:
    std::string m_address;
    std::string m_foreground;
    std::string m_background;
};

} // namespace vantor::hosts::terminal
