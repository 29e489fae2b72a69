// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>

namespace vantor::platform {

/// The stream that stands for the process's standard output where the log and the printers write: stdout,
/// unless a host that owns standard output (a picture or a report goes there) has named another. Any thread.
[[nodiscard]] std::FILE* standardOutput() noexcept;

/// Names another stream, which must outlive its use; null means stdout again. Call it before other threads
/// write.
void setStandardOutput(std::FILE* stream) noexcept;

} // namespace vantor::platform
