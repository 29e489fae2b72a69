// SPDX-License-Identifier: MIT
// How a binary reader takes the values that hold no others: numbers, dates, texts, data.
#include "platform/propertylist/BigEndian.hpp"
#include "platform/propertylist/BinaryReader.hpp"
#include "platform/propertylist/UTF16.hpp"

#include <bit>

namespace vantor::platform {

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

} // namespace vantor::platform
