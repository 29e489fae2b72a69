// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::sysinfo {

/// A key's value as text; absent where the system does not know it.
[[nodiscard]] std::optional<std::string> valueOf(const std::string& key);

/// Every key at or below a name that has a value: those that the libraries name and the files under
/// /proc/sys; in a replay, what the recording holds.
[[nodiscard]] std::map<std::string, std::string> tree(const std::string& name, bool replaying);

} // namespace vantor::sysinfo
