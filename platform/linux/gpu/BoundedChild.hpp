// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace vantor::platform::linux::gpu {

/// Runs `work` in a child process without a terminal to write to and gives back the bytes that it returned,
/// 64 KiB at most. Absent where it crashes, gives nothing, or takes longer than `limit`: it is killed then.
/// What a driver leaks, breaks or leaves running goes with the child. No shell and no other program is
/// involved.
[[nodiscard]] std::optional<std::string> runInChild(const std::function<std::string()>& work,
                                                    std::chrono::milliseconds limit);

} // namespace vantor::platform::linux::gpu
