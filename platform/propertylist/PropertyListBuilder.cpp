// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyListBuilder.hpp"

#include "platform/propertylist/PropertyListTable.hpp"

#include <bit>

namespace vantor::platform {

using Number = PropertyListBuilder::Number;
using Kind = PropertyListKind;

PropertyListBuilder::PropertyListBuilder() : m_table(std::make_shared<PropertyListTable>()) {}

PropertyListBuilder::PropertyListBuilder(const PropertyListObject& list)
    : m_table(std::make_shared<PropertyListTable>(list.table())) {}

Number PropertyListBuilder::add(Kind kind, std::uint64_t value) {
    m_table->nodes.push_back({.kind = kind, .value = value});
    return static_cast<Number>(m_table->nodes.size() - 1);
}

Number PropertyListBuilder::addText(Kind kind, std::string_view bytes) {
    const Number number = add(kind, m_table->converted.size());
    m_table->converted.append(bytes);
    m_table->nodes[number].isWide = true;
    m_table->nodes[number].count = static_cast<std::uint32_t>(bytes.size());
    return number;
}

Number PropertyListBuilder::boolean(bool value) {
    return add(Kind::boolean, value ? 1 : 0);
}

Number PropertyListBuilder::integer(std::int64_t value) {
    return add(Kind::integer, std::bit_cast<std::uint64_t>(value));
}

Number PropertyListBuilder::real(double value) {
    return add(Kind::real, std::bit_cast<std::uint64_t>(value));
}

Number PropertyListBuilder::data(std::string_view bytes) {
    return addText(Kind::data, bytes);
}

Number PropertyListBuilder::string(std::string_view utf8) {
    return addText(Kind::string, utf8);
}

Number PropertyListBuilder::uid(std::uint64_t object) {
    return add(Kind::uid, object);
}

Number PropertyListBuilder::array(const std::vector<Number>& members) {
    const Number number = add(Kind::array, m_table->references.size());
    m_table->nodes[number].count = static_cast<std::uint32_t>(members.size());
    m_table->references.insert(m_table->references.end(), members.begin(), members.end());
    return number;
}

Number PropertyListBuilder::dictionary(const Pairs& pairs) {
    const Number number = add(Kind::dictionary, m_table->references.size());
    m_table->nodes[number].count = static_cast<std::uint32_t>(pairs.size());
    for (const auto& [key, value] : pairs) {
        m_table->references.push_back(key);
        m_table->references.push_back(value);
    }
    return number;
}

PropertyListObject PropertyListBuilder::finish(Number top) {
    return {std::exchange(m_table, std::make_shared<PropertyListTable>()), top};
}

} // namespace vantor::platform
