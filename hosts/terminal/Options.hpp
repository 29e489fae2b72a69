// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/picture/Look.hpp"
#include "hosts/terminal/screen/Capabilities.hpp"

#include <optional>
#include <string>

namespace vantor::hosts::terminal {

/// What the command line asks for.
struct Options {
    bool once = false;
    bool watch = false;
    std::optional<double> watchSeconds; ///< absent: `interval`
    std::optional<double> interval;     ///< in seconds; absent: the preference's
    std::optional<Format> format;
    std::optional<platform::Source> field; ///< the one section to print
    bool demo = false;
    common::FleetChoice fleet; ///< other machines to show: a wall, or
    common::NodeChoice node;   ///< one of them alone
    bool compact = false;
    bool noMouse = false;
    ColorChoice color = ColorChoice::automatic;
    std::optional<platform::Appearance> appearance; ///< absent: what the terminal says
    std::optional<Glyphs> glyphs;                   ///< absent: what locale and terminal have
    std::string log;                                ///< a file's name; empty: standard error
    std::string output; ///< a file to write each report to; empty: standard output

    /// Whether a reading was asked for in so many words.
    [[nodiscard]] bool wantsPrint() const { return once || watch || format || field || !output.empty(); }
};

/// Reads the command line. Prints the help or version on standard output, or what is wrong on standard
/// error, and gives the exit status (0 to 2) instead where there is nothing left to do.
struct ParsedOptions {
    Options options;
    std::optional<int> exitStatus;
};
[[nodiscard]] ParsedOptions parseOptions(int count, const char* const* arguments);

} // namespace vantor::hosts::terminal
