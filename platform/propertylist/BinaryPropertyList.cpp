// SPDX-License-Identifier: MIT
#include "platform/propertylist/BinaryPropertyList.hpp"

#include "platform/propertylist/BigEndian.hpp"
#include "platform/propertylist/PropertyListTable.hpp"
#include "platform/propertylist/UTF16.hpp"

#include <algorithm>
#include <bit>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vantor::platform {

namespace {

constexpr std::size_t trailerSize = 32;

struct Trailer {
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
    Trailer m_trailer;
    std::size_t m_at = 0; // the next byte of the object being read
    std::size_t m_textBytes = 0;
    std::vector<std::uint32_t> m_next;
    PropertyListFailure m_failure;
};

bool BinaryReader::readTrailer() {
    if (bytes().size() < binaryPropertyListMagic.size() + trailerSize) {
        return fail("it is cut short", bytes().size());
    }
    const std::size_t start = bytes().size() - trailerSize;
    const std::string_view trailer = bytes().substr(start);
    m_trailer.offsetWidth = bigEndian(trailer.substr(6, 1));
    m_trailer.referenceWidth = bigEndian(trailer.substr(7, 1));
    m_trailer.objects = bigEndian(trailer.substr(8, 8));
    m_trailer.top = bigEndian(trailer.substr(16, 8));
    m_trailer.offsets = bigEndian(trailer.substr(24, 8));
    const auto isWidth = [](std::size_t width) { return width >= 1 && width <= 8; };
    if (!isWidth(m_trailer.offsetWidth) || !isWidth(m_trailer.referenceWidth)) {
        return fail("its trailer names impossible widths", start + 6);
    }
    if (m_trailer.objects > propertyListMostObjects) {
        return fail("it claims too many objects", start + 8);
    }
    if (m_trailer.top >= m_trailer.objects) {
        return fail("its top object does not exist", start + 16);
    }
    // The table lies between the objects and the trailer. The count is bounded, so the product cannot
    // overflow.
    if (m_trailer.offsets < binaryPropertyListMagic.size() || m_trailer.offsets > start ||
        m_trailer.objects * m_trailer.offsetWidth > start - m_trailer.offsets) {
        return fail("its offset table does not fit", start + 24);
    }
    return true;
}

bool BinaryReader::readReachable() {
    m_table->nodes.resize(m_trailer.objects);
    m_next.push_back(static_cast<std::uint32_t>(m_trailer.top));
    for (std::size_t depth = 0; !m_next.empty(); ++depth) {
        if (depth == propertyListDeepest) {
            return fail("it is nested too deeply", m_at);
        }
        for (const std::uint32_t index : std::exchange(m_next, {})) {
            if (!m_table->nodes[index].isRead && !readObject(index)) {
                return false;
            }
        }
    }
    return true;
}

/// A dictionary may come before its keys are read, so this waits until all objects are.
bool BinaryReader::keysAreStrings() {
    for (const PropertyListNode& node : m_table->nodes) {
        const std::size_t pairs = node.kind == PropertyListKind::dictionary ? node.count : 0;
        for (std::size_t i = 0; i < pairs; ++i) {
            const std::uint32_t key = m_table->references[node.value + 2 * i];
            if (m_table->nodes[key].kind != PropertyListKind::string) {
                return fail("a dictionary's key is not a text", 0);
            }
        }
    }
    return true;
}

bool BinaryReader::readObject(std::uint32_t index) {
    const std::size_t entry =
        static_cast<std::size_t>(m_trailer.offsets) + index * std::size_t{m_trailer.offsetWidth};
    const std::uint64_t offset = bigEndian(bytes().substr(entry, m_trailer.offsetWidth));
    if (offset < binaryPropertyListMagic.size() || offset >= m_trailer.offsets) {
        return fail("an object lies outside the file", entry);
    }
    m_at = static_cast<std::size_t>(offset);
    const auto marker = static_cast<std::uint8_t>(bytes()[m_at++]);
    const auto low = static_cast<std::uint8_t>(marker & 0x0FU);
    PropertyListNode& node = m_table->nodes[index];
    node.isRead = true;
    switch (marker >> 4U) {
    case 0x0:
        return readSimple(node, low);
    case 0x1:
        return readInteger(node, low);
    case 0x2:
        return readReal(node, low, PropertyListKind::real);
    case 0x3:
        return readReal(node, low, PropertyListKind::date);
    case 0x4:
        return readText(node, low, PropertyListKind::data);
    case 0x5:
        return readText(node, low, PropertyListKind::string);
    case 0x6:
        return readUTF16(node, low);
    case 0x8:
        return readUID(node, low);
    case 0xA:
        return readContainer(node, low, false);
    case 0xD:
        return readContainer(node, low, true);
    default:
        return fail("an object is of an unknown kind", m_at - 1);
    }
}

bool BinaryReader::readSimple(PropertyListNode& node, std::uint8_t low) {
    if (low == 8 || low == 9) {
        node.kind = PropertyListKind::boolean;
        node.value = low == 9 ? 1 : 0;
        return true;
    }
    return low == 0 || fail("an object is of an unknown kind", m_at - 1);
}

/// The next big-endian number of the object being read.
std::optional<std::uint64_t> BinaryReader::takeNumber(std::size_t width) {
    if (width > m_trailer.offsets - m_at) {
        fail("an object is cut short", m_at);
        return std::nullopt;
    }
    m_at += width;
    return bigEndian(bytes().substr(m_at - width, width));
}

/// 1, 2 and 4 bytes are unsigned, 8 are signed, and 16 hold what is past the signed 64-bit range.
bool BinaryReader::readInteger(PropertyListNode& node, std::uint8_t low) {
    if (low > 4) {
        return fail("an integer is too wide", m_at - 1);
    }
    const std::optional<std::uint64_t> upper = low == 4 ? takeNumber(8) : 0;
    const std::optional<std::uint64_t> value = takeNumber(low == 4 ? 8 : std::size_t{1} << low);
    if (!upper || !value) {
        return false;
    }
    const bool isSmallNegative = *upper == ~std::uint64_t{0} && (*value >> 63U) == 1;
    if (*upper != 0 && !isSmallNegative) {
        return fail("an integer is too large", m_at - 16);
    }
    node.kind = PropertyListKind::integer;
    node.isWide = low == 4 && !isSmallNegative;
    node.value = *value;
    return true;
}

bool BinaryReader::readReal(PropertyListNode& node, std::uint8_t low, PropertyListKind kind) {
    const bool isSingle = low == 2 && kind == PropertyListKind::real;
    if (!isSingle && low != 3) {
        return fail("a real or a date has an unknown width", m_at - 1);
    }
    const std::optional<std::uint64_t> bits = takeNumber(isSingle ? 4 : 8);
    if (!bits) {
        return false;
    }
    node.kind = kind;
    node.value = *bits;
    if (isSingle) {
        const auto single = std::bit_cast<float>(static_cast<std::uint32_t>(*bits));
        node.value = std::bit_cast<std::uint64_t>(static_cast<double>(single));
    }
    return true;
}

bool BinaryReader::readUID(PropertyListNode& node, std::uint8_t low) {
    if (low > 7) {
        return fail("a reference is too wide", m_at - 1);
    }
    const std::optional<std::uint64_t> value = takeNumber(low + std::size_t{1});
    node.kind = PropertyListKind::uid;
    node.value = value.value_or(0);
    return value.has_value();
}

/// How many units of `unit` bytes follow: the marker's low half, or an integer object after it when that
/// is 15. What does not fit into the file is refused here, so that callers may multiply and allocate.
std::optional<std::uint64_t> BinaryReader::readCount(std::uint8_t low, std::size_t unit) {
    std::uint64_t count = low;
    if (low == 0x0F) {
        const std::optional<std::uint64_t> marker = takeNumber(1);
        if (marker && (*marker < 0x10 || *marker > 0x13)) {
            fail("a count is not an integer", m_at - 1);
            return std::nullopt;
        }
        const std::optional<std::uint64_t> wide =
            marker ? takeNumber(std::size_t{1} << (*marker & 3U)) : std::nullopt;
        if (!wide) {
            return std::nullopt;
        }
        count = *wide;
    }
    if (count > (m_trailer.offsets - m_at) / unit) {
        fail("an object is cut short", m_at);
        return std::nullopt;
    }
    return count;
}

/// Objects may overlap: without a bound, many of them over the same bytes would multiply a small file's work.
bool BinaryReader::addText(std::size_t length) {
    m_textBytes += length;
    return m_textBytes <= 2 * bytes().size() || fail("its texts are too long together", m_at);
}

/// Data, and strings of plain ASCII, stay where they are in the file.
bool BinaryReader::readText(PropertyListNode& node, std::uint8_t low, PropertyListKind kind) {
    const std::optional<std::uint64_t> count = readCount(low, 1);
    if (!count) {
        return false;
    }
    node.kind = kind;
    node.count = static_cast<std::uint32_t>(*count);
    node.value = m_at;
    if (!addText(node.count)) {
        return false;
    }
    for (const char c : kind == PropertyListKind::string ? bytes().substr(m_at, node.count) : "") {
        if ((static_cast<std::uint8_t>(c) & 0x80U) != 0) {
            return fail("a plain text holds a byte that is not ASCII", m_at);
        }
    }
    return true;
}

bool BinaryReader::readUTF16(PropertyListNode& node, std::uint8_t low) {
    const std::optional<std::uint64_t> count = readCount(low, 2);
    if (!count) {
        return false;
    }
    node.kind = PropertyListKind::string;
    node.isWide = true;
    node.value = m_table->converted.size();
    appendUTF16(m_table->converted, bytes().substr(m_at, static_cast<std::size_t>(*count) * 2));
    node.count = static_cast<std::uint32_t>(m_table->converted.size() - node.value);
    return addText(node.count);
}

bool BinaryReader::readContainer(PropertyListNode& node, std::uint8_t low, bool isDictionary) {
    const std::size_t width = m_trailer.referenceWidth;
    const std::optional<std::uint64_t> count = readCount(low, isDictionary ? 2 * width : width);
    if (!count) {
        return false;
    }
    const auto members = static_cast<std::size_t>(*count);
    std::vector<std::uint32_t>& references = m_table->references;
    // Each takes a byte of its own, unless containers overlap.
    const std::size_t mostReferences = std::min(propertyListMostReferences, bytes().size());
    if (members * (isDictionary ? 2 : 1) > mostReferences - references.size()) {
        return fail("its containers have too many members", m_at);
    }
    node.kind = isDictionary ? PropertyListKind::dictionary : PropertyListKind::array;
    node.count = static_cast<std::uint32_t>(members);
    node.value = references.size();
    for (std::size_t i = 0; i < members; ++i) {
        // A dictionary's keys come first in the file, then its values.
        if (!addReference(m_at + i * width) ||
            (isDictionary && !addReference(m_at + (members + i) * width))) {
            return false;
        }
    }
    return true;
}

bool BinaryReader::addReference(std::size_t at) {
    const std::uint64_t target = bigEndian(bytes().substr(at, m_trailer.referenceWidth));
    if (target >= m_trailer.objects) {
        return fail("a container names an object that does not exist", at);
    }
    const auto index = static_cast<std::uint32_t>(target);
    m_table->references.push_back(index);
    if (!m_table->nodes[index].isRead) {
        m_next.push_back(index);
    }
    return true;
}

} // namespace

PropertyListResult readBinaryPropertyList(std::string bytes) {
    return BinaryReader(std::move(bytes)).read();
}

} // namespace vantor::platform
