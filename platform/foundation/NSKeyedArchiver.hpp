// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <string>

namespace vantor::platform {

/// Writes keyed archives, the counterpart of `NSKeyedUnarchiver`.
class NSKeyedArchiver {
public:
    /// A colour's components as an archive of a `UIColor` in the binary form, some 300 bytes; a named colour
    /// becomes its components. Throws std::bad_alloc. Any thread.
    [[nodiscard]] static std::string archivedDataWithRootObject(const UIColor& color);
};

} // namespace vantor::platform
