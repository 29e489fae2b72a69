// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/AppContent.hpp"

#include <functional>
#include <memory>

namespace vantor::tests {

/// Puts a demonstration in place: machine, workload and disposal, in the environment's language.
void putWholeDemoInPlace();

/// Sets the locale and the toolkit's direction; false where the machine has no such locale.
bool setLanguage(const char* locale);

/// The pages as a window shows them, at a size, with their figures.
std::unique_ptr<hosts::app::AppContent>
shownContent(hosts::app::PageKind page, platform::Appearance appearance = platform::Appearance::light,
             double textScale = 1);

/// Turns the main loop, and the toolkit's, until a condition holds; false when that takes too long.
bool turnUntil(const std::function<bool()>& done);

} // namespace vantor::tests
