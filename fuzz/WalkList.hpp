// SPDX-License-Identifier: MIT
#pragma once

#include "Fuzz.hpp"
#include "platform/propertylist/PropertyList.hpp"

#include <deque>

namespace vantor::fuzz {

/// Asks every question of what a list reaches, up to a bound, since lists may be circular.
inline void walk(const platform::PropertyListResult& result) {
    const auto* const top = std::get_if<platform::PropertyListObject>(&result);
    if (top == nullptr) {
        require(std::get<platform::PropertyListFailure>(result).reason[0] != '\0');
        return;
    }
    std::deque<platform::PropertyListObject> waiting{*top};
    for (int left = 2000; left > 0 && !waiting.empty(); --left) {
        const platform::PropertyListObject object = waiting.front();
        waiting.pop_front();
        const int answers = (object.boolean() ? 1 : 0) + (object.number() ? 1 : 0) + (object.date() ? 1 : 0) +
                            (object.data() ? 1 : 0) + (object.string() ? 1 : 0) + (object.uid() ? 1 : 0);
        const bool isScalar = object.kind() < platform::PropertyListKind::array;
        require(answers == (isScalar && object.kind() != platform::PropertyListKind::null ? 1 : 0));
        require(!object.integer() || object.number());
        for (std::size_t i = 0; i < object.size() && waiting.size() < 2000; ++i) {
            if (const auto member = object.at(i)) {
                waiting.push_back(*member);
            } else {
                const auto pair = *object.pairAt(i);
                require(pair.first.string().has_value());
                require(object.objectForKey(*pair.first.string()).has_value());
                waiting.push_back(pair.second);
            }
        }
    }
}

} // namespace vantor::fuzz
