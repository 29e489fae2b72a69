// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyList.hpp"

#include "platform/propertylist/BinaryPropertyList.hpp"
#include "platform/propertylist/XMLPropertyList.hpp"

#include <exception>
#include <utility>

namespace vantor::platform {

PropertyListResult readPropertyList(std::string bytes) noexcept {
    if (bytes.empty()) {
        return PropertyListFailure{"it is empty", 0};
    }
    if (bytes.size() > propertyListMostBytes) {
        return PropertyListFailure{"it is larger than 1 MiB", propertyListMostBytes};
    }
    try {
        return bytes.starts_with(binaryPropertyListMagic) ? readBinaryPropertyList(std::move(bytes))
                                                          : readXMLPropertyList(bytes);
    } catch (const std::exception&) { // bad_alloc, or length_error on a machine with a small size type
        return PropertyListFailure{noMemoryForList, 0};
    }
}

} // namespace vantor::platform
