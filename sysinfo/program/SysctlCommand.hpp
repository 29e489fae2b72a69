// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace vantor::sysinfo {

struct SysctlOptions {
    std::vector<std::string> keys;
    std::string tree; ///< a name at or below which everything is wanted
};

[[nodiscard]] CLI::App& declareSysctl(CLI::App& app, SysctlOptions& options);

/// Prints kernel values; the exit code.
[[nodiscard]] int showSysctl(const SysctlOptions& options, bool json);

} // namespace vantor::sysinfo
