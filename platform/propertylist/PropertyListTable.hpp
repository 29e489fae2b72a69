// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListObject.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform {

/// One object. `value` is the bits of a scalar; of data and strings, where their bytes start; of a container,
/// where its members start in the list of references. `count` is how many bytes, members or pairs follow
/// there.
struct PropertyListNode {
    PropertyListKind kind = PropertyListKind::null;
    bool isWide = false; ///< integer: the bits are unsigned; data or string: its bytes are in `converted`
    bool isRead = false; ///< for the reader of the binary form: this object has been read
    std::uint32_t count = 0;
    std::uint64_t value = 0;
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
