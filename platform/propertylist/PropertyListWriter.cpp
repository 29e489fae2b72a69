// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyListWriter.hpp"

#include "platform/propertylist/BinaryPropertyList.hpp"

#include <exception>

namespace vantor::platform {

PropertyListForm formOfPropertyList(std::string_view bytes) {
    return bytes.starts_with(binaryPropertyListMagic) ? PropertyListForm::binary : PropertyListForm::xml;
}

PropertyListBytes writePropertyList(const PropertyListObject& list, PropertyListForm form) noexcept {
    try {
        PropertyListBytes bytes =
            form == PropertyListForm::binary ? writeBinaryPropertyList(list) : writeXMLPropertyList(list);
        const auto* const text = std::get_if<std::string>(&bytes);
        if (text != nullptr && text->size() >= propertyListMostBytes) {
            return PropertyListFailure{listTooLarge, propertyListMostBytes};
        }
        return bytes;
    } catch (const std::exception&) {
        return PropertyListFailure{noMemoryForList, 0};
    }
}

} // namespace vantor::platform
