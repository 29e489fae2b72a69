// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListObject.hpp"

#include <cstddef>
#include <string>
#include <variant>

namespace vantor::platform {

/// The bounds for lists from outside. A list past one of them is refused as a whole.
inline constexpr std::size_t propertyListMostBytes = std::size_t{1} << 20;
inline constexpr std::size_t propertyListMostObjects = 65'536;
inline constexpr std::size_t propertyListMostReferences = 262'144; ///< members of all containers together
inline constexpr std::size_t propertyListDeepest = 512;            ///< steps from the top object

/// Why bytes are no property list, in English, and where in them. The text is a literal: a failure never
/// allocates, so that running out of memory can be told too.
struct PropertyListFailure {
    const char* reason = "";
    std::size_t at = 0;
};

/// The reason where memory ran out: a file from outside asked for more than there is.
inline constexpr const char* noMemoryForList = "there is no memory for it";

/// The top object, or why there is none.
using PropertyListResult = std::variant<PropertyListObject, PropertyListFailure>;

/// Reads a property list in either form, binary ("bplist00") or XML. The result keeps the bytes. Never
/// throws; takes time and memory in proportion to the bytes, 12 MB for the largest list; loads nothing that a
/// list refers to. Any thread.
[[nodiscard]] PropertyListResult readPropertyList(std::string bytes) noexcept;

} // namespace vantor::platform
