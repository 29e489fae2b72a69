// SPDX-License-Identifier: MIT
#pragma once

#include <cfloat>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

/// Typed values and where they come from: the base of the system-information libraries.
namespace vantor::PackagesBase {

/// The machine's word, signed and unsigned: what a count is read into where nothing narrower is asked for.
using Int = std::intptr_t;
using UInt = std::uintptr_t;

/// The bytes of a value that is not read as text or number.
using Data = std::vector<std::byte>;

/// A truth value as C code passes it on: 0 or 1 in an `int`.
using CBool = int;

/// The integers that numbers are read into: 8 to 64 bits, signed and unsigned. Characters and `bool` are not
/// numbers here.
template<class T>
concept FixedWidthInteger =
    std::same_as<T, signed char> || std::same_as<T, unsigned char> || std::same_as<T, short> ||
    std::same_as<T, unsigned short> || std::same_as<T, int> || std::same_as<T, unsigned int> ||
    std::same_as<T, long> || std::same_as<T, unsigned long> || std::same_as<T, long long> ||
    std::same_as<T, unsigned long long>;

template<class T>
concept SignedFixedWidthInteger = FixedWidthInteger<T> && std::is_signed_v<T>;

template<class T>
concept UnsignedFixedWidthInteger = FixedWidthInteger<T> && std::is_unsigned_v<T>;

#ifdef __FLT16_MANT_DIG__
/// Present where the compiler has half floats; `VANTOR_HAS_FLOAT16` tells.
#define VANTOR_HAS_FLOAT16 1
using Float16 = _Float16;
#else
#define VANTOR_HAS_FLOAT16 0
struct Float16;
#endif

#if LDBL_MANT_DIG == 64
/// Present where `long double` is the 80-bit type of the x86 processors; `VANTOR_HAS_FLOAT80` tells.
#define VANTOR_HAS_FLOAT80 1
using Float80 = long double;
#else
#define VANTOR_HAS_FLOAT80 0
#endif

/// The binary floating-point types, half floats among them.
template<class T>
concept BinaryFloatingPoint = std::floating_point<T> || (VANTOR_HAS_FLOAT16 == 1 && std::same_as<T, Float16>);

} // namespace vantor::PackagesBase
