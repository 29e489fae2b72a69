// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Types.hpp"

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

/// A source of named values: a sysctl namespace, a tree of files. A name that the source does not know, or
/// whose value is not of the kind asked for, gives absent; nothing throws.
///
/// The concepts named `…Protocol…` ask for static operations on the type, their twins named `…Instance` for
/// the same operations on a value.
namespace vantor::PackagesBase {

template<class F, class T>
concept FetchesInteger = requires(std::string_view name) {
    { F::template getInteger<T>(name) } -> std::same_as<std::optional<T>>;
};

template<class F, class T>
concept FetchesIntegerInstance = requires(const F& source, std::string_view name) {
    { source.template getInteger<T>(name) } -> std::same_as<std::optional<T>>;
};

/// Everything but `getBool`, which the mixins of BoolFromInt.hpp supply.
template<class F>
concept FetchesTextAndIntegers =
    requires(std::string_view name) {
        { F::getString(name) } -> std::same_as<std::optional<std::string>>;
    } && FetchesInteger<F, std::int8_t> && FetchesInteger<F, std::uint8_t> &&
    FetchesInteger<F, std::int16_t> && FetchesInteger<F, std::uint16_t> && FetchesInteger<F, std::int32_t> &&
    FetchesInteger<F, std::uint32_t> && FetchesInteger<F, std::int64_t> && FetchesInteger<F, std::uint64_t>;

template<class F>
concept FetchesTextAndIntegersInstance =
    requires(const F& source, std::string_view name) {
        { source.getString(name) } -> std::same_as<std::optional<std::string>>;
    } && FetchesIntegerInstance<F, std::int8_t> && FetchesIntegerInstance<F, std::uint8_t> &&
    FetchesIntegerInstance<F, std::int16_t> && FetchesIntegerInstance<F, std::uint16_t> &&
    FetchesIntegerInstance<F, std::int32_t> && FetchesIntegerInstance<F, std::uint32_t> &&
    FetchesIntegerInstance<F, std::int64_t> && FetchesIntegerInstance<F, std::uint64_t>;

/// `getString(name)`, `getInteger<T>(name)` for every fixed-width integer, `getBool(name)`; all static and
/// all optional.
template<class F>
concept FetchProtocol = FetchesTextAndIntegers<F> && requires(std::string_view name) {
    { F::getBool(name) } -> std::same_as<std::optional<bool>>;
};

/// `FetchProtocol` and `getData(name)`, the bytes of a value.
template<class F>
concept FetchProtocolData = FetchProtocol<F> && requires(std::string_view name) {
    { F::getData(name) } -> std::same_as<std::optional<Data>>;
};

/// The operations of `FetchProtocol` on a value.
template<class F>
concept FetchProtocolInstance =
    FetchesTextAndIntegersInstance<F> && requires(const F& source, std::string_view name) {
        { source.getBool(name) } -> std::same_as<std::optional<bool>>;
    };

/// The operations of `FetchProtocolData` on a value.
template<class F>
concept FetchProtocolDataInstance =
    FetchProtocolInstance<F> && requires(const F& source, std::string_view name) {
        { source.getData(name) } -> std::same_as<std::optional<Data>>;
    };

} // namespace vantor::PackagesBase
