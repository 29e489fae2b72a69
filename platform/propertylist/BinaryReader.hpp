// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyList.hpp"
#include "platform/propertylist/PropertyListTable.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::platform {

/// The 32 bytes at the end of a binary property list.
struct BinaryTrailer {
    std::size_t offsetWidth = 0;
    std::size_t referenceWidth = 0;
    std::uint64_t objects = 0;
    std::uint64_t top = 0;
    std::uint64_t offsets = 0; // where the offset table starts
};

/// Reads what the top object reaches, level by level, so that depth is counted and no stack grows.
class BinaryReader {
public:
    explicit BinaryReader(std::string bytes) : m_table(std::make_shared<PropertyListTable>()) {
        m_table->bytes = std::move(bytes);
    }

    PropertyListResult read() {
        if (!readTrailer() || !readReachable() || !keysAreStrings()) {
            return m_failure;
        }
        return PropertyListObject(std::move(m_table), static_cast<std::uint32_t>(m_trailer.top));
    }

private:
    bool fail(const char* reason, std::size_t at) {
        m_failure = {reason, at};
        return false;
    }

    [[nodiscard]] std::string_view bytes() const { return m_table->bytes; }

    bool readTrailer();
    bool readReachable();
    bool keysAreStrings();
    bool readObject(std::uint32_t index);
    bool readSimple(PropertyListNode& node, std::uint8_t low);
    bool readInteger(PropertyListNode& node, std::uint8_t low);
    bool readReal(PropertyListNode& node, std::uint8_t low, PropertyListKind kind);
    bool readUID(PropertyListNode& node, std::uint8_t low);
    bool readText(PropertyListNode& node, std::uint8_t low, PropertyListKind kind);
    bool readUTF16(PropertyListNode& node, std::uint8_t low);
    bool readContainer(PropertyListNode& node, std::uint8_t low, bool isDictionary);
    bool addText(std::size_t length);
    bool addReference(std::size_t at);
    std::optional<std::uint64_t> readCount(std::uint8_t low, std::size_t unit);
    std::optional<std::uint64_t> takeNumber(std::size_t width);

    std::shared_ptr<PropertyListTable> m_table;
    BinaryTrailer m_trailer;
    std::size_t m_at = 0; // the next byte of the object being read
    std::size_t m_textBytes = 0;
    std::vector<std::uint32_t> m_next;
    PropertyListFailure m_failure;
};

} // namespace vantor::platform
