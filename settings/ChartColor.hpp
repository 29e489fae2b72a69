// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"
#include "platform/foundation/NSUserDefaults.hpp"

#include <optional>
#include <string>

namespace vantor {

/// The ring colour that the user picked in the Vantor app, read afresh from "chartcolor": a keyed archive of
/// one colour. Absent when there is none, when it is the clear colour (which stands for "no colour of my
/// own"), or when the archive cannot be decoded, which is logged. An archive of anything but a colour is
/// fatal.
[[nodiscard]] std::optional<platform::UIColor> storedChartColor();

/// What a store holds under "chartcolor".
struct ChartColorRecord {
    std::optional<platform::UIColor> color = {}; ///< absent too for the clear colour
    bool isUndecodable = false;                  ///< data that is no sound archive
    bool isOtherClass = false;                   ///< an archive of something else, which would end a widget
    std::string problem = {}; ///< the same as a sentence for people; empty when all is well
};

/// Looks without the consequences.
[[nodiscard]] ChartColorRecord chartColorIn(const platform::NSUserDefaults& store);

/// The same colour, and none where the archive holds anything else: for the program that sets it right.
[[nodiscard]] std::optional<platform::UIColor> usableChartColor();

} // namespace vantor
