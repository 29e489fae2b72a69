// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyList.hpp"

#include <string>
#include <string_view>

namespace vantor::platform {

inline constexpr std::string_view binaryPropertyListMagic = "bplist00";

/// Reads the binary form: the magic, objects, a table of their offsets, and a trailer of 32 bytes that says
/// how wide offsets and references are, how many objects there are, which is the top one and where the table
/// is. Only what the top object reaches is looked at. May throw std::bad_alloc. `bytes` is at most
/// `propertyListMostBytes` long.
[[nodiscard]] PropertyListResult readBinaryPropertyList(std::string bytes);

} // namespace vantor::platform
