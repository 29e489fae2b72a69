// SPDX-License-Identifier: MIT
#pragma once

#include "controller/Sections.hpp"

#include <set>

namespace vantor::hosts::terminal {

/// What `makeReports` reports: the sections with a ring. The network has a timer of its own.
[[nodiscard]] inline std::set<platform::Source> timedSources() {
    std::set<platform::Source> sources;
    for (const Section& section : sections) {
        if (section.chart) {
            sources.insert(section.source);
        }
    }
    return sources;
}

} // namespace vantor::hosts::terminal
