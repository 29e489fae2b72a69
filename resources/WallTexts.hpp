// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/NSLocalizedString.hpp"

#include <array>

namespace vantor::platform {

/// The English texts of the wall of many machines, sorted by key, behind all others.
inline constexpr auto wallTexts = std::to_array<EnglishText>({
    EnglishText{"wall_ALL", "all machines"},
    EnglishText{"wall_ASKING", "Asking the machines"},
    EnglishText{"wall_BACK", "back"},
    EnglishText{"wall_COLOR", "colour: {figure}"},
    EnglishText{"wall_DENSITY", "density"},
    EnglishText{"wall_DOWN", "down {time}"},
    EnglishText{"wall_EMPTY", "No machines"},
    EnglishText{"wall_ENTEROPENS", "Enter opens it"},
    EnglishText{"wall_FILTER", "filter"},
    EnglishText{"wall_FOLD", "fold"},
    EnglishText{"wall_GONE", "That machine is gone"},
    EnglishText{"wall_MACHINES", "Machines"},
    EnglishText{"wall_NAME", "name"},
    EnglishText{"wall_NOMATCH", "No machine matches"},
    EnglishText{"wall_OPEN", "open"},
    EnglishText{"wall_RINGS", "rings: {figures}"},
    EnglishText{"wall_SORTBY", "sort by"},
    EnglishText{"wall_STATE", "state"},
    EnglishText{"wall_STATEGREEN", "green"},
    EnglishText{"wall_STATEORANGE", "orange"},
    EnglishText{"wall_STATERED", "red"},
    EnglishText{"wall_STATEUNKNOWN", "unknown"},
    EnglishText{"wall_STATEYELLOW", "yellow"},
    EnglishText{"wall_WORST", "worst"},
    EnglishText{"wall_WORSTFIGURE", "worst figure"},
    EnglishText{"wall_WORSTOF", "Worst of {n} in {group}"},
});

} // namespace vantor::platform
