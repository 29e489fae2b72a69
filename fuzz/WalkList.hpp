// SPDX-License-Identifier: MIT
#pragma once

#include "Fuzz.hpp"
#include "platform/propertylist/PropertyListWriter.hpp"

#include <cmath>
#include <deque>
#include <utility>

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

/// Whether two objects of a kind that holds no others are the same.
inline bool sameScalar(const platform::PropertyListObject& a, const platform::PropertyListObject& b) {
    const bool bothNaN = a.number() && b.number() && std::isnan(*a.number()) && std::isnan(*b.number());
    const bool sameDate =
        a.date().has_value() == b.date().has_value() &&
        (!a.date() || *a.date() == *b.date() || (std::isnan(*a.date()) && std::isnan(*b.date())));
    return a.kind() == b.kind() && a.size() == b.size() && a.boolean() == b.boolean() &&
           a.integer() == b.integer() && (bothNaN || a.number() == b.number()) && sameDate &&
           a.data() == b.data() && a.string() == b.string() && a.uid() == b.uid();
}

/// What is written in the form that was read holds the same again.
inline void writeAgain(const platform::PropertyListResult& result, platform::PropertyListForm form) {
    using platform::PropertyListObject;
    const auto* const top = std::get_if<PropertyListObject>(&result);
    if (top == nullptr) {
        return;
    }
    const platform::PropertyListBytes bytes = platform::writePropertyList(*top, form);
    const auto* const text = std::get_if<std::string>(&bytes);
    if (text == nullptr) { // only a list that is too large
        require(std::get<platform::PropertyListFailure>(bytes).reason == platform::listTooLarge);
        return;
    }
    const platform::PropertyListResult read = platform::readPropertyList(*text);
    const auto* const again = std::get_if<PropertyListObject>(&read);
    require(again != nullptr);
    std::deque<std::pair<PropertyListObject, PropertyListObject>> waiting{{*top, *again}};
    for (int left = 2000; left > 0 && !waiting.empty(); --left) {
        const auto [a, b] = waiting.front();
        waiting.pop_front();
        require(sameScalar(a, b));
        for (std::size_t i = 0; i < a.size() && waiting.size() < 2000; ++i) {
            if (a.at(i)) {
                waiting.emplace_back(*a.at(i), *b.at(i));
            } else {
                waiting.emplace_back(a.pairAt(i)->first, b.pairAt(i)->first);
                waiting.emplace_back(a.pairAt(i)->second, b.pairAt(i)->second);
            }
        }
    }
}

} // namespace vantor::fuzz
