// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/screen/Terminfo.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// What the user wants: as many as there are, colours in any case, none, or a certain number of them.
enum class ColorChoice : std::uint8_t { automatic, always, none, eight, sixteen, palette, direct };

/// How many a terminal gets: the ANSI colours, xterm's 256, or 24 bits.
enum class ColorDepth : std::uint8_t { none, eight, sixteen, palette, direct };

/// The variables that tell of a terminal; empty where unset.
struct TerminalEnvironment {
    std::string term;
    std::string colorTerm; ///< COLORTERM: "truecolor" or "24bit"
    std::string colorFgBg; ///< COLORFGBG: "15;0", the last number being the background
    bool noColor = false;  ///< NO_COLOR is set and not empty
    bool isTmux = false;   ///< inside tmux, which may call itself "screen"

    static TerminalEnvironment fromProcess();
};

/// How many colours to use: what was chosen, else what environment and database tell.
[[nodiscard]] ColorDepth colorDepthFor(ColorChoice choice, const TerminalEnvironment& environment,
                                       const Terminfo& terminal);

/// The characters to draw with: blocks and braille in a UTF-8 locale, except on the Linux console, whose
/// fonts have the PC's block characters only, and on terminals that are known to draw sextants themselves,
/// whatever their font.
[[nodiscard]] Glyphs glyphsFor(const TerminalEnvironment& environment, bool isUtf8);

/// The background that COLORFGBG tells; absent where it tells nothing.
[[nodiscard]] std::optional<platform::Appearance> appearanceFrom(std::string_view colorFgBg);

/// Whether the terminal may be asked for its background (OSC 11). The Linux console and others that know no
/// such question would print it.
[[nodiscard]] bool answersQueries(const TerminalEnvironment& environment, const Terminfo& terminal);

/// The bytes that put the machine's name into the terminal's title, and those that bring the old title back;
/// empty for terminals that would show them or could not bring it back.
[[nodiscard]] std::string titleOn(const TerminalEnvironment& environment, const Terminfo& terminal,
                                  std::string_view name);
[[nodiscard]] std::string titleOff(const TerminalEnvironment& environment, const Terminfo& terminal);

/// The nearest colour of the terminal's palette to 0xRRGGBB. Depth `direct` has none.
[[nodiscard]] int nearestColor(std::uint32_t rgb, ColorDepth depth);

} // namespace vantor::hosts::terminal
