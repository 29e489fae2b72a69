// SPDX-License-Identifier: MIT
#include "platform/propertylist/BinaryReader.hpp"

#include "platform/propertylist/BigEndian.hpp"
#include "platform/propertylist/BinaryPropertyList.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform {

namespace {

constexpr std::size_t trailerSize = 32;

} // namespace

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

} // namespace vantor::platform
