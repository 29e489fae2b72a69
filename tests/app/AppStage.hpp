// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/AppContent.hpp"

#include <functional>
#include <memory>
#include <vector>

namespace vantor::tests {

/// Puts an object in place for ever: workers may be asking it when the test ends.
template<typename Kept>
Kept& putForEver(bool demo) {
    static auto& all = *new std::vector<std::unique_ptr<Kept>>;
    return *all.emplace_back(std::make_unique<Kept>(demo));
}

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
