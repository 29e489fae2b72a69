// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/program/Page.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace vantor::sysinfo {

/// Objects keep the order in which they were written.
using Json = nlohmann::ordered_json;

/// As text with a line feed at its end. Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string written(const Json& json);

/// For programs: what the page shows, sizes in bytes, frequencies in Hz, times in seconds, absent values as
/// null.
[[nodiscard]] std::string pageJson(const Page& page);

} // namespace vantor::sysinfo
