// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

namespace vantor::sysinfo {

[[nodiscard]] CLI::App& declareUname(CLI::App& app);

/// Prints the names in the order of the options; the exit code.
[[nodiscard]] int showUname(const CLI::App& command, bool json);

} // namespace vantor::sysinfo
