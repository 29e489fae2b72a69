// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <string>
#include <string_view>
#include <variant>

namespace vantor::platform {

/// A sound archive whose top object is no colour. To a caller that expects a colour this is fatal.
struct OtherClass {
    std::string className; ///< printable text
};

/// The data is no keyed archive, or a broken one.
struct DecodingError {
    std::string reason; ///< English
};

/// What an archive holds: nothing (a nil on top), a colour, an object of another class, or an error.
using UnarchivedObject = std::variant<std::monostate, UIColor, OtherClass, DecodingError>;

/// Reads keyed archives: a property list of numbered objects that refer to each other by UID. Colours are the
/// one class that it builds.
class NSKeyedUnarchiver {
public:
    /// Decodes the object under "root". Never throws; running out of memory is a decoding error. Any thread.
    [[nodiscard]] static UnarchivedObject unarchiveTopLevelObjectWithData(std::string_view data) noexcept;
};

} // namespace vantor::platform
