// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `caches` to `clean`.
void addCleanCaches(CLI::App& clean, Action& action);

} // namespace vantor::hosts::command
