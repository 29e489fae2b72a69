// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vantor::platform::posix {

/// The beginning of a file, `most` bytes of it; empty where it cannot be read or is no regular file: a pipe
/// or a device is not waited for. Any thread.
[[nodiscard]] std::string readRegularFile(const std::string& path, std::size_t most);

} // namespace vantor::platform::posix
