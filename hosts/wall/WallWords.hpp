// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"

#include <QString>
#include <chrono>
#include <optional>
#include <string>

/// What a window's wall says besides the words that all walls share (fleet/FleetWords.hpp), in the user's
/// language and digits.
namespace vantor::hosts::wall {

/// A text from left to right within one of another direction: a name, a mount point.
[[nodiscard]] QString isolated(const std::string& text);
[[nodiscard]] QString countText(std::size_t count); ///< "1,994"
[[nodiscard]] QString figureName(platform::FleetFigure figure);
/// The same with the network's ways in words: "Received".
[[nodiscard]] QString figureWord(platform::FleetFigure figure);
/// "97%", "1.2 MB/s", or "–".
[[nodiscard]] QString figureText(platform::FleetFigure figure, const std::optional<double>& value);

/// How a machine is, in words: "red", "4 min old", "down since 14:03: connection refused".
[[nodiscard]] QString stateText(const fleet::FleetRow& row);
/// "15 s average · 9 s old" by the machine's own source and reading; since when it is down.
[[nodiscard]] QString momentText(const platform::FleetSnapshot& snapshot, const fleet::FleetRow& row,
                                 std::chrono::nanoseconds now);
/// "Worst of 1,200 in web · Enter opens it".
[[nodiscard]] QString hintText(const fleet::FleetGroup& group, bool isWorst);
/// What rings and colours mean: "rings: RAM · Storage · CPU", "colour: CPU".
[[nodiscard]] QString ringsText();
[[nodiscard]] QString colorText(fleet::FleetOrder order);

} // namespace vantor::hosts::wall
