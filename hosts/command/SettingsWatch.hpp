// SPDX-License-Identifier: MIT
#pragma once

#include "settings/Settings.hpp"

#include <vector>

namespace vantor::hosts::command {

/// Prints a line for each of these preferences whenever its value changes, until a signal ends the program or
/// the reader goes away. Gives an exit status where there is nothing to watch.
int watchSettings(const std::vector<const Setting*>& wanted, bool asJson);

} // namespace vantor::hosts::command
