// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::platform::posix {

/// The value of an environment variable; empty where it is unset. Any thread, as long as none sets one.
[[nodiscard]] std::string environmentText(const char* variable);

} // namespace vantor::platform::posix
