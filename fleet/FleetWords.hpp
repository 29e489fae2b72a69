// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantor::fleet {

// What a wall says, in the user's language and digits: pieces, and lines made of them with " · " between.

/// "RAM", "Storage", "CPU", "↓", "↑".
[[nodiscard]] std::string figureName(platform::FleetFigure figure);
/// "97%" or "1.2 MB/s"; "–" for what was not told.
[[nodiscard]] std::string figureText(platform::FleetFigure figure, const std::optional<double>& value);
/// "1.2 MB", "0 KB": the bytes of a rate, without "/s".
[[nodiscard]] std::string bytesText(double bytes);

/// "39 of 41": how many answer.
[[nodiscard]] std::string answeringText(const FleetCounts& counts);
/// "2 down", "5 red", "4 orange", "1 stale", "3 unknown"; empty for bands that are not worth a word.
[[nodiscard]] std::string bandCountText(Band band, std::size_t count);
/// "39 of 41 · 2 down · 5 red · 4 orange": a piece for each band that has machines.
[[nodiscard]] std::string countsText(const FleetCounts& counts);

/// "worst".
[[nodiscard]] std::string worstWord();
/// A machine and the figure of its band: "db07 RAM 97%"; its name alone where there is none.
[[nodiscard]] std::string machineText(const FleetRow& row);
/// "39 of 41 · 5 red · worst db07 RAM 97%": the counts and the worst.
[[nodiscard]] std::string headerText(const FleetTable& table);
/// "8 of 9 · worst db07 RAM 97%", or "4 · …" where all answer. Without the group's name.
[[nodiscard]] std::string groupText(const FleetGroup& group);

/// "9 s old", "4 min old", "3 h old".
[[nodiscard]] std::string ageText(std::chrono::duration<double> age);
/// "15 s average · 9 s old": the longest interval and the longest silence of the sources that answer; empty
/// before any has. `now` is on the steady clock.
[[nodiscard]] std::string averageText(const platform::FleetSnapshot& snapshot, std::chrono::nanoseconds now);
/// The same of one machine; without an average where the interval is 0.
[[nodiscard]] std::string averageText(std::chrono::duration<double> interval,
                                      std::chrono::duration<double> age);
/// "down since 14:03: connection refused", without a reason "down since 14:03"; empty for what is not down.
[[nodiscard]] std::string downText(const std::optional<std::chrono::system_clock::time_point>& since,
                                   const std::string& reason = {});
/// What keeps a machine's figures from being those of now: "down since 14:03", "4 min old"; else empty.
[[nodiscard]] std::string noteText(const FleetRow& row);
/// "prod: connection refused" for each source with a problem. The reasons are English.
[[nodiscard]] std::vector<std::string> sourceProblems(const platform::FleetSnapshot& snapshot);

} // namespace vantor::fleet
