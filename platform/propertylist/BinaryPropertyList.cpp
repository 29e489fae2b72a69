// SPDX-License-Identifier: MIT
#include "platform/propertylist/BinaryPropertyList.hpp"

#include "platform/propertylist/BinaryReader.hpp"

#include <utility>

namespace vantor::platform {

PropertyListResult readBinaryPropertyList(std::string bytes) {
    return BinaryReader(std::move(bytes)).read();
}

} // namespace vantor::platform
