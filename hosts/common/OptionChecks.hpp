// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the command lines of the programs with a window have in common.
namespace vantor::hosts::common {

/// A decimal number in the C locale: the parser's own conversions follow the user's, a command line does not.
[[nodiscard]] std::optional<double> plainNumber(const std::string& text);

/// Accepts these words alone.
[[nodiscard]] CLI::Validator oneOf(std::vector<std::string_view> words);

/// What is wrong with a number of pixels per point, 0.5 to 8; empty when nothing is.
[[nodiscard]] std::string scaleProblem(const std::string& text);

/// The exit status of a program whose command line asked for help or for its version, which is printed, or
/// was wrong, which is said on standard error.
[[nodiscard]] int endAfter(const CLI::ParseError& problem, CLI::App& app);

} // namespace vantor::hosts::common
