// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/sources/WatchedNode.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::common {

/// What a list of targets holds at most: more are asked through a Prometheus.
inline constexpr std::size_t mostTargets = 10000;

/// Reads a list of targets as Prometheus's file-based discovery has them: a JSON text
/// `[{"targets": ["web01:9100"], "labels": {"dc": "a"}}]`. Of the labels that begin with "__", `__scheme__`,
/// `__metrics_path__` and `__param_NAME` say how to ask; the others are left out, and the rest are the
/// machine's labels. Without a port it is 9100. Absent, with the reason in English in `problem`, for what is
/// no such list; a target that is no address is left out, and `doubt` names the first of them. Pure.
[[nodiscard]] std::optional<std::vector<platform::remote::NodeTarget>>
targetsFrom(std::string_view text, std::string& problem, std::string& doubt);

} // namespace vantor::hosts::common
