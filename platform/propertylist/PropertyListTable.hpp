// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListObject.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform {

/// One object. What `start` and `count` mean depends on the kind: bytes of a text for data and strings,
/// entries of the reference list for containers.
struct PropertyListNode {
    PropertyListKind kind = PropertyListKind::null;
    bool isWide = false; ///< integer: the bits are an unsigned 64-bit value; string: it lies in `converted`
    bool isRead = false; ///< the readers' own mark
    std::uint32_t count = 0; ///< bytes, members or pairs
    std::uint64_t value = 0; ///< the bits of a scalar, or where bytes or references start
};

/// All objects of one list. A dictionary of n pairs holds 2n references: key, value, key, value.
class PropertyListTable {
public:
    std::string bytes;     ///< the file itself (binary form): plain strings and data lie in it
    std::string converted; ///< texts that the file holds in another form, as UTF-8 or plain bytes
    std::vector<PropertyListNode> nodes;
    std::vector<std::uint32_t> references;

    [[nodiscard]] std::string_view textOf(const PropertyListNode& node) const {
        const std::string_view whole = node.isWide ? converted : bytes;
        return whole.substr(static_cast<std::size_t>(node.value), node.count);
    }
};

} // namespace vantor::platform
