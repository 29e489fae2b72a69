// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyList.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace vantor::platform {

/// How a file writes a property list.
enum class PropertyListForm : std::uint8_t { binary, xml };

/// The form that the bytes of a list are in.
[[nodiscard]] PropertyListForm formOfPropertyList(std::string_view bytes);

/// A file's bytes, or why a list cannot be written in that form.
using PropertyListBytes = std::variant<std::string, PropertyListFailure>;

/// Writes a list so that `readPropertyList` finds the same objects again. The binary form holds every list;
/// the XML form has no null, no control characters and no circles, writes shared objects once for each
/// reference, and drops a date's fraction of a second. A result that is not under `propertyListMostBytes` is
/// refused. Never throws. Any thread.
[[nodiscard]] PropertyListBytes writePropertyList(const PropertyListObject& list,
                                                  PropertyListForm form) noexcept;

/// For `writePropertyList`: each form's own writer. They may throw std::bad_alloc.
[[nodiscard]] PropertyListBytes writeBinaryPropertyList(const PropertyListObject& list);
[[nodiscard]] PropertyListBytes writeXMLPropertyList(const PropertyListObject& list);

/// The reason where a list is too large.
inline constexpr const char* listTooLarge = "it would not be under 1 MiB";

} // namespace vantor::platform
