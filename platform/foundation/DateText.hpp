// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

namespace vantor::platform {

/// An instant as the platform describes it: "2024-05-01 14:03:07 +0000", universal time in the Gregorian
/// calendar, the fraction of a second dropped. Pure; any thread.
[[nodiscard]] std::string dateDescription(std::chrono::system_clock::time_point instant);

/// How far the current time zone's clocks are ahead of universal time at an instant. Follows a change of the
/// zone while the process runs. Any thread.
[[nodiscard]] std::chrono::seconds secondsFromGMT(std::chrono::system_clock::time_point instant);

/// The time of day in the current time zone, for people: "14:03". Any thread.
[[nodiscard]] std::string clockText(std::chrono::system_clock::time_point instant);

} // namespace vantor::platform
