// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string_view>

namespace vantor::platform::posix {

/// Writes a text to a descriptor, also to one whose writes do not wait (O_NONBLOCK) because somebody who
/// shares the open file wants it so: then waits for the reader, `patience` for each piece. Gives 0, or the
/// error number (ETIMEDOUT where the reader took nothing for so long). Any thread.
[[nodiscard]] int writeWhole(int descriptor, std::string_view text,
                             std::chrono::milliseconds patience = std::chrono::milliseconds::max());

} // namespace vantor::platform::posix
