// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"
#include "platform/propertylist/PropertyListObject.hpp"

#include <optional>

namespace vantor::platform {

/// The colour in an archived `UIColor`: its keys (RGB form: UIRed, UIGreen, UIBlue; gray form: UIWhite; both
/// with UIAlpha) and, where the 32-bit value is inexact, the same keys ending in "-Double", which win.
/// `systemName` is the object under UISystemColorName: a name that is known wins over the components. Absent
/// when neither form is complete.
[[nodiscard]] std::optional<UIColor> colorFromArchive(const PropertyListObject& archived,
                                                      const std::optional<PropertyListObject>& systemName);

} // namespace vantor::platform
