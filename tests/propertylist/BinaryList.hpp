// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace vantor::tests {

/// The lowest `width` bytes of a number, the highest first.
inline std::string bigEndianBytes(std::uint64_t value, unsigned width) {
    std::string bytes;
    for (unsigned i = width; i-- > 0;) {
        bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(i < 8 ? value >> (8 * i) : 0)));
    }
    return bytes;
}

/// Puts a binary property list together from objects given as their bytes. Every part of the trailer can be
/// lied about.
struct BinaryList {
    std::vector<std::string> objects;
    unsigned referenceWidth = 1;
    unsigned offsetWidth = 4;
    std::uint64_t top = 0;
    std::uint64_t claimedObjects = 0; // 0: the truth

    BinaryList(std::initializer_list<std::string> given) : objects(given) {}
    BinaryList() = default;

    /// A marker with its count, in the short form or the long one.
    static std::string head(unsigned kind, std::uint64_t count) {
        if (count < 15) {
            return {static_cast<char>(kind << 4U | count)};
        }
        return std::string{static_cast<char>(kind << 4U | 15U), '\x13'} + bigEndianBytes(count, 8);
    }
    static std::string text(const std::string& ascii) { return head(5, ascii.size()) + ascii; }

    [[nodiscard]] std::string array(const std::vector<std::uint64_t>& members) const {
        std::string bytes = head(0xA, members.size());
        for (const std::uint64_t member : members) {
            bytes += bigEndianBytes(member, referenceWidth);
        }
        return bytes;
    }

    [[nodiscard]] std::string bytes() const {
        std::string file = "bplist00";
        std::string offsets;
        for (const std::string& object : objects) {
            offsets += bigEndianBytes(file.size(), offsetWidth);
            file += object;
        }
        const std::uint64_t table = file.size();
        file += offsets + std::string(6, '\0') + bigEndianBytes(offsetWidth, 1) +
                bigEndianBytes(referenceWidth, 1);
        file += bigEndianBytes(claimedObjects == 0 ? objects.size() : claimedObjects, 8);
        return file + bigEndianBytes(top, 8) + bigEndianBytes(table, 8);
    }
};

} // namespace vantor::tests
