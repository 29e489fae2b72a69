// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Types.hpp"

#include <concepts>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

/// `copy(value)`: an independent value, equal to the original. Numbers, `bool`, texts that own their
/// characters, arrays and dictionaries of such values, and every class with a member `copy()` that gives its
/// own type.
namespace vantor::PackagesBase {

template<class T>
    requires(std::same_as<T, bool> || FixedWidthInteger<T> || BinaryFloatingPoint<T>)
[[nodiscard]] constexpr T copy(T value) {
    return value;
}

template<class T>
    requires requires(const T& value) {
        { value.copy() } -> std::same_as<T>;
    } && (!requires { typename T::traits_type; }) // a string's own copy() is another thing
[[nodiscard]] T copy(const T& value) {
    return value.copy();
}

/// A new string, built from the characters.
template<class C>
[[nodiscard]] std::basic_string<C> copy(const std::basic_string<C>& text) {
    return {text.data(), text.size()};
}

template<class E>
[[nodiscard]] std::vector<E> copy(const std::vector<E>& array);
template<class K, class V>
[[nodiscard]] std::map<K, V> copy(const std::map<K, V>& dictionary);
template<class K, class V>
[[nodiscard]] std::unordered_map<K, V> copy(const std::unordered_map<K, V>& dictionary);

/// A value that `copy` copies.
template<class T>
concept Copying = requires(const T& value) {
    { PackagesBase::copy(value) } -> std::same_as<T>;
};

/// Each element copied, in order.
template<class E>
std::vector<E> copy(const std::vector<E>& array) {
    static_assert(Copying<E>, "an array copies where its elements do: give their type a member `copy()`");
    std::vector<E> result;
    result.reserve(array.size());
    for (const auto& element : array) {
        result.push_back(copy(static_cast<const E&>(element)));
    }
    return result;
}

/// Each key and each value copied.
template<class K, class V>
std::map<K, V> copy(const std::map<K, V>& dictionary) {
    static_assert(Copying<K> && Copying<V>, "a dictionary copies where its keys and values do");
    std::map<K, V> result;
    for (const auto& [key, value] : dictionary) {
        result.emplace(copy(key), copy(value));
    }
    return result;
}

template<class K, class V>
std::unordered_map<K, V> copy(const std::unordered_map<K, V>& dictionary) {
    static_assert(Copying<K> && Copying<V>, "a dictionary copies where its keys and values do");
    std::unordered_map<K, V> result;
    for (const auto& [key, value] : dictionary) {
        result.emplace(copy(key), copy(value));
    }
    return result;
}

} // namespace vantor::PackagesBase
