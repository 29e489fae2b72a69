// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <optional>

namespace vantor {

/// The ring colour that the user picked in the Vantor app, read afresh from "chartcolor": a keyed archive of
/// one colour. Absent when there is none, when it is the clear colour (which stands for "no colour of my
/// own"), or when the archive cannot be decoded, which is logged. An archive of anything but a colour is
/// fatal.
[[nodiscard]] std::optional<platform::UIColor> storedChartColor();

} // namespace vantor
