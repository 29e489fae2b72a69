// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyListObject.hpp"

#include "platform/propertylist/PropertyListTable.hpp"

#include <bit>
#include <limits>

namespace vantor::platform {

namespace {

const PropertyListNode* nodeOf(const PropertyListTable& table, std::uint32_t index, PropertyListKind kind) {
    const PropertyListNode& node = table.nodes[index];
    return node.kind == kind ? &node : nullptr;
}

} // namespace

PropertyListObject::PropertyListObject(std::shared_ptr<const PropertyListTable> table, std::uint32_t index)
    : m_table(std::move(table)), m_index(index) {}

PropertyListKind PropertyListObject::kind() const {
    return m_table->nodes[m_index].kind;
}

std::optional<bool> PropertyListObject::boolean() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::boolean);
    return node != nullptr ? std::optional(node->value != 0) : std::nullopt;
}

std::optional<std::int64_t> PropertyListObject::integer() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::integer);
    if (node == nullptr || (node->isWide && node->value > std::numeric_limits<std::int64_t>::max())) {
        return std::nullopt;
    }
    return std::bit_cast<std::int64_t>(node->value);
}

std::optional<double> PropertyListObject::number() const {
    const PropertyListNode& node = m_table->nodes[m_index];
    if (node.kind == PropertyListKind::real) {
        return std::bit_cast<double>(node.value);
    }
    if (node.kind != PropertyListKind::integer) {
        return std::nullopt;
    }
    return node.isWide ? static_cast<double>(node.value)
                       : static_cast<double>(std::bit_cast<std::int64_t>(node.value));
}

std::optional<double> PropertyListObject::date() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::date);
    return node != nullptr ? std::optional(std::bit_cast<double>(node->value)) : std::nullopt;
}

std::optional<std::string_view> PropertyListObject::data() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::data);
    return node != nullptr ? std::optional(m_table->textOf(*node)) : std::nullopt;
}

std::optional<std::string_view> PropertyListObject::string() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::string);
    return node != nullptr ? std::optional(m_table->textOf(*node)) : std::nullopt;
}

std::optional<std::uint64_t> PropertyListObject::uid() const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::uid);
    return node != nullptr ? std::optional(node->value) : std::nullopt;
}

std::size_t PropertyListObject::size() const {
    const PropertyListNode& node = m_table->nodes[m_index];
    const bool container = node.kind == PropertyListKind::array || node.kind == PropertyListKind::dictionary;
    return container ? node.count : 0;
}

std::optional<PropertyListObject> PropertyListObject::at(std::size_t index) const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::array);
    if (node == nullptr || index >= node->count) {
        return std::nullopt;
    }
    return PropertyListObject(m_table, m_table->references[node->value + index]);
}

std::optional<std::pair<PropertyListObject, PropertyListObject>>
PropertyListObject::pairAt(std::size_t index) const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::dictionary);
    if (node == nullptr || index >= node->count) {
        return std::nullopt;
    }
    const std::uint32_t* const pair = &m_table->references[node->value + 2 * index];
    return std::pair(PropertyListObject(m_table, pair[0]), PropertyListObject(m_table, pair[1]));
}

std::optional<PropertyListObject> PropertyListObject::objectForKey(std::string_view key) const {
    const PropertyListNode* const node = nodeOf(*m_table, m_index, PropertyListKind::dictionary);
    for (std::size_t left = node != nullptr ? node->count : 0; left > 0; --left) {
        const std::uint32_t* const pair = &m_table->references[node->value + 2 * (left - 1)];
        if (m_table->textOf(m_table->nodes[pair[0]]) == key) {
            return PropertyListObject(m_table, pair[1]);
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform
