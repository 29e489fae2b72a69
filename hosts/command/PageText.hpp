// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <vector>

/// What the pages' texts have in common.
namespace vantor::hosts::command {

/// Blanks before a text, up to a width in bytes.
[[nodiscard]] std::string atRight(const std::string& text, std::size_t width);

/// "No program waited for memory in the last five minutes." and a line feed; nothing where it is not known.
[[nodiscard]] std::string pressureText(const std::optional<platform::Pressure>& pressure,
                                       const std::string& resource);

/// Averages in percent, the sum in seconds; null where it is not known.
[[nodiscard]] nlohmann::ordered_json pressureJson(const std::optional<platform::Pressure>& pressure);

[[nodiscard]] nlohmann::ordered_json processesJson(const std::vector<platform::ProcessIdentity>& processes);

} // namespace vantor::hosts::command
