// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListObject.hpp"

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::platform {

/// Puts a property list together, from nothing or from all objects of an existing one. Objects are known by
/// their numbers; those of the list that it starts from keep theirs, so that what is not touched stays as it
/// is, shared references and circles included. Not for several threads at once.
class PropertyListBuilder {
public:
    using Number = std::uint32_t;
    using Pairs = std::vector<std::pair<Number, Number>>; ///< keys, which must be strings, and values

    PropertyListBuilder();
    explicit PropertyListBuilder(const PropertyListObject& list);

    Number boolean(bool value);
    Number integer(std::int64_t value);
    Number real(double value);
    Number data(std::string_view bytes);
    Number string(std::string_view utf8);
    Number uid(std::uint64_t object);
    Number array(const std::vector<Number>& members);
    Number dictionary(const Pairs& pairs);

    /// The list with this object on top. The builder is empty afterwards.
    [[nodiscard]] PropertyListObject finish(Number top);

private:
    Number add(PropertyListKind kind, std::uint64_t value);
    Number addText(PropertyListKind kind, std::string_view bytes);

    std::shared_ptr<PropertyListTable> m_table;
};

} // namespace vantor::platform
