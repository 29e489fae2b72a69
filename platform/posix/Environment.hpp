// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vantor::platform::posix {

/// The value of an environment variable; empty where it is unset. Any thread, as long as none sets one.
[[nodiscard]] std::string environmentText(const char* variable);

/// All of it, "NAME=value" each: what a program that is started later, from another thread, is to be given.
/// Any thread, as long as none sets a variable.
[[nodiscard]] std::vector<std::string> wholeEnvironment();

} // namespace vantor::platform::posix
