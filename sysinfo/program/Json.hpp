// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/CpuDetect/GPUDetection.hpp"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>

namespace vantor::sysinfo {

/// Objects keep the order in which they were written.
using Json = nlohmann::ordered_json;

/// null for no device.
[[nodiscard]] Json jsonOf(const std::optional<CpuDetect::GPUDetection::GPU>& gpu);

/// As text with a line feed at its end. Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string written(const Json& json);

} // namespace vantor::sysinfo
