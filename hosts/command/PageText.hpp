// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the pages' texts have in common.
namespace vantor::hosts::command {

/// Blanks before a text, up to a width in characters.
[[nodiscard]] std::string atRight(const std::string& text, std::size_t width);

/// A text of the program in the viewer's language, and one with a value in place of "{name}".
[[nodiscard]] std::string words(std::string_view key);
[[nodiscard]] std::string words(std::string_view key, std::string_view name, std::string_view value);

/// "12.5%" with so many digits behind the decimal sign.
[[nodiscard]] std::string percentText(double percent, int digits);

/// Averages in percent, the sum in seconds; null where it is not known.
[[nodiscard]] nlohmann::ordered_json pressureJson(const std::optional<platform::Pressure>& pressure);

[[nodiscard]] nlohmann::ordered_json processesJson(const std::vector<platform::ProcessIdentity>& processes);

} // namespace vantor::hosts::command
