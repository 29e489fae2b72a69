// SPDX-License-Identifier: MIT
// How the binary form is written: the objects that the top one reaches, each once, then the table of their
// offsets, then the trailer.
#include "platform/propertylist/BigEndian.hpp"
#include "platform/propertylist/BinaryPropertyList.hpp"
#include "platform/propertylist/PropertyListTable.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"
#include "platform/propertylist/UTF16.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace vantor::platform {

namespace {

using Kind = PropertyListKind;

/// The least of 1, 2, 4 and 8 bytes that hold a number.
std::size_t widthFor(std::uint64_t value) {
    return value <= 0xFF ? 1 : value <= 0xFFFF ? 2 : value <= 0xFFFFFFFF ? 4 : 8;
}

class BinaryWriter {
public:
    explicit BinaryWriter(const PropertyListObject& list) : m_table(list.table()) {
        m_places.resize(m_table.nodes.size(), unplaced);
        reach(list.index());
    }

    PropertyListBytes write() {
        m_bytes = binaryPropertyListMagic;
        std::vector<std::size_t> offsets;
        for (const std::uint32_t index : m_order) {
            offsets.push_back(m_bytes.size());
            writeObject(m_table.nodes[index]);
            if (m_bytes.size() > propertyListMostBytes) {
                return PropertyListFailure{listTooLarge, m_bytes.size()};
            }
        }
        const std::size_t table = m_bytes.size();
        const std::size_t offsetWidth = widthFor(table);
        for (const std::size_t offset : offsets) {
            appendBigEndian(m_bytes, offset, offsetWidth);
        }
        m_bytes.append(6, '\0'); // five unused bytes and the version of a sorting order
        appendBigEndian(m_bytes, offsetWidth, 1);
        appendBigEndian(m_bytes, m_referenceWidth, 1);
        appendBigEndian(m_bytes, m_order.size(), 8);
        appendBigEndian(m_bytes, 0, 8); // the top object comes first
        appendBigEndian(m_bytes, table, 8);
        return std::move(m_bytes);
    }

private:
    static constexpr std::uint32_t unplaced = std::numeric_limits<std::uint32_t>::max();

    /// Numbers what the top object reaches, breadth first; no recursion, since depth is the list's choice.
    void reach(std::uint32_t top) {
        place(top);
        for (std::size_t i = 0; i < m_order.size(); ++i) {
            const PropertyListNode& node = m_table.nodes[m_order[i]];
            for (std::size_t member = 0; member < members(node); ++member) {
                place(m_table.references[node.value + member]);
            }
        }
        m_referenceWidth = widthFor(m_order.size() - 1);
    }

    void place(std::uint32_t index) {
        if (m_places[index] == unplaced) {
            m_places[index] = static_cast<std::uint32_t>(m_order.size());
            m_order.push_back(index);
        }
    }

    static std::size_t members(const PropertyListNode& node) {
        return node.kind == Kind::array ? node.count : node.kind == Kind::dictionary ? 2 * node.count : 0;
    }

    void writeObject(const PropertyListNode& node) {
        switch (node.kind) {
        case Kind::null:
            m_bytes.push_back('\0');
            break;
        case Kind::boolean:
            m_bytes.push_back(node.value != 0 ? '\x09' : '\x08');
            break;
        case Kind::integer:
            writeInteger(node);
            break;
        case Kind::real:
        case Kind::date:
            m_bytes.push_back(node.kind == Kind::real ? '\x23' : '\x33');
            appendBigEndian(m_bytes, node.value, 8);
            break;
        case Kind::data:
            writeHead(0x4, node.count);
            m_bytes.append(m_table.textOf(node));
            break;
        case Kind::string:
            writeString(m_table.textOf(node));
            break;
        case Kind::uid:
            appendBigEndian(m_bytes, 0x80 + widthFor(node.value) - 1, 1);
            appendBigEndian(m_bytes, node.value, widthFor(node.value));
            break;
        case Kind::array:
        case Kind::dictionary:
            writeContainer(node);
            break;
        }
    }

    /// One, two and four bytes are unsigned, eight are signed, and what is past that range takes sixteen.
    void writeInteger(const PropertyListNode& node) {
        constexpr std::uint64_t signedMost = std::numeric_limits<std::int64_t>::max();
        if (node.isWide && node.value > signedMost) {
            m_bytes.push_back('\x14');
            m_bytes.append(8, '\0');
            appendBigEndian(m_bytes, node.value, 8);
            return;
        }
        writeCount(node.value);
    }

    void writeCount(std::uint64_t value) {
        const std::size_t width = widthFor(value);
        m_bytes.push_back(width == 1 ? '\x10' : width == 2 ? '\x11' : width == 4 ? '\x12' : '\x13');
        appendBigEndian(m_bytes, value, width);
    }

    void writeHead(std::uint64_t kind, std::uint64_t count) {
        appendBigEndian(m_bytes, kind << 4U | std::min<std::uint64_t>(count, 15), 1);
        if (count >= 15) {
            writeCount(count);
        }
    }

    void writeString(std::string_view text) {
        const bool isPlain =
            std::ranges::all_of(text, [](char c) { return (static_cast<std::uint8_t>(c) & 0x80U) == 0; });
        const std::string wide = isPlain ? std::string() : bytesOfUTF16(text);
        writeHead(isPlain ? 0x5 : 0x6, isPlain ? text.size() : wide.size() / 2);
        m_bytes.append(isPlain ? text : wide);
    }

    void writeContainer(const PropertyListNode& node) {
        const std::size_t step = node.kind == Kind::dictionary ? 2 : 1;
        writeHead(node.kind == Kind::dictionary ? 0xD : 0xA, node.count);
        for (std::size_t turn = 0; turn < step; ++turn) { // a dictionary's keys come first, then its values
            for (std::size_t i = 0; i < node.count; ++i) {
                const std::uint32_t member = m_table.references[node.value + step * i + turn];
                appendBigEndian(m_bytes, m_places[member], m_referenceWidth);
            }
        }
    }

    const PropertyListTable& m_table;
    std::vector<std::uint32_t> m_order;  // indices in the table, in the order of writing
    std::vector<std::uint32_t> m_places; // the other way round
    std::size_t m_referenceWidth = 1;
    std::string m_bytes;
};

} // namespace

PropertyListBytes writeBinaryPropertyList(const PropertyListObject& list) {
    return BinaryWriter(list).write();
}

} // namespace vantor::platform
