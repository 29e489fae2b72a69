// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace vantor::platform {

class PropertyListTable;

enum class PropertyListKind : std::uint8_t {
    null,
    boolean,
    integer,
    real,
    date,
    data,
    string,
    uid, ///< a reference inside a keyed archive
    array,
    dictionary,
};

/// One object of a property list: a cheap handle that keeps the whole list alive. The list is a flat table
/// whose containers name their members by number, so sharing and circles cost nothing and nothing here
/// recurses. Immutable; any thread.
///
/// Each reader below answers only for its own kind and is absent for every other. Views live as long as any
/// handle to the same list.
class PropertyListObject {
public:
    [[nodiscard]] PropertyListKind kind() const;

    [[nodiscard]] std::optional<bool> boolean() const;
    /// An integer within the signed 64-bit range. The format has unsigned ones up to 2^64 - 1 too, for which
    /// only `number` answers.
    [[nodiscard]] std::optional<std::int64_t> integer() const;
    /// An integer or a real.
    [[nodiscard]] std::optional<double> number() const;
    /// Seconds since 2001-01-01 00:00:00 in universal time.
    [[nodiscard]] std::optional<double> date() const;
    /// The bytes of a data object.
    [[nodiscard]] std::optional<std::string_view> data() const;
    /// UTF-8. A code unit that is no text in the file reads as U+FFFD.
    [[nodiscard]] std::optional<std::string_view> string() const;
    /// The number of the object that a keyed archive refers to here.
    [[nodiscard]] std::optional<std::uint64_t> uid() const;

    /// How many members a container has: values of an array, pairs of a dictionary; 0 for anything else.
    [[nodiscard]] std::size_t size() const;
    /// A member of an array.
    [[nodiscard]] std::optional<PropertyListObject> at(std::size_t index) const;
    /// A pair of a dictionary; the key is a string.
    [[nodiscard]] std::optional<std::pair<PropertyListObject, PropertyListObject>>
    pairAt(std::size_t index) const;
    /// A dictionary's value. Of pairs with the same key the last one counts.
    [[nodiscard]] std::optional<PropertyListObject> objectForKey(std::string_view key) const;

    /// For the readers and writers of this folder: an object of a finished table, and where it stands.
    PropertyListObject(std::shared_ptr<const PropertyListTable> table, std::uint32_t index);
    [[nodiscard]] const PropertyListTable& table() const { return *m_table; }
    [[nodiscard]] std::uint32_t index() const { return m_index; }

private:
    std::shared_ptr<const PropertyListTable> m_table;
    std::uint32_t m_index;
};

} // namespace vantor::platform
