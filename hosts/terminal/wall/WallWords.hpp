// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/terminal/picture/Look.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a wall says, in the user's language and in characters that the terminal has.
namespace vantor::hosts::terminal {

/// A text in which signs outside ASCII have become signs within where the terminal has no others.
[[nodiscard]] std::string inGlyphs(std::string text, const Look& look);

/// ×, ~ or –; a blank for a figure of now.
[[nodiscard]] std::string signOf(fleet::Band band, const Look& look);

/// "34%", or "34" without the sign; a dash for what is not known.
[[nodiscard]] std::string shareText(const std::optional<double>& share, const Look& look,
                                    bool hasSign = true);
/// "↓1.2 MB", in a second.
[[nodiscard]] std::string rateText(const platform::FleetMachine& machine, platform::FleetFigure which,
                                   const Look& look);

/// Since when a machine is silent, and why; in few words only since when.
[[nodiscard]] std::string downWords(const platform::FleetMachine& machine, const Look& look);
[[nodiscard]] std::string downBriefly(const platform::FleetMachine& machine);

/// A text broken between words into rows of a width; the last one is cut.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, int width, int rows);

} // namespace vantor::hosts::terminal
