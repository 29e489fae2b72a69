// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyList.hpp"

#include <string_view>

namespace vantor::platform {

/// Reads the XML form. The document type line is skipped, and what it names is never loaded; a document that
/// declares anything of its own, such as entities, is refused. A dictionary with the one key "CF$UID"
/// and an integer is a reference. May throw std::bad_alloc. `bytes` is at most `propertyListMostBytes` long.
[[nodiscard]] PropertyListResult readXMLPropertyList(std::string_view bytes);

} // namespace vantor::platform
