// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace vantor::platform {

/// What a numeric read takes its bytes for.
enum class SysctlSign : std::uint8_t { unknown, isSigned, isUnsigned };

/// Both calls below.
int readSysctl(const char* name, void* oldp, std::size_t* oldlenp, const void* newp, std::size_t newlen,
               SysctlSign sign);

/// Reads a kernel value by its name, as the BSD call of this name does. 0, or -1 and `errno`:
///
/// - unknown name: ENOENT, `*oldlenp` untouched;
/// - `oldp` null: 0, and `*oldlenp` is the size needed (of a text with its NUL);
/// - buffer too small: ENOMEM, nothing copied;
/// - buffer larger: only the value's bytes are written, and `*oldlenp` becomes their number.
///
/// A buffer of 1, 2, 4 or 8 bytes asks for a number: it is filled whole, in the machine's own order of bytes,
/// or the call fails with ERANGE where the number does not go into it, with EINVAL where the key holds a
/// text. Every other buffer is a text's, so the size needed for a text is never 1, 2, 4 or 8. A number that
/// the system keeps as text answers both.
///
/// Nothing can be set: a new value is refused with EPERM. Any thread.
inline int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, const void* newp,
                        std::size_t newlen) {
    return readSysctl(name, oldp, oldlenp, newp, newlen, SysctlSign::unknown);
}

/// The same into an integer. Its type tells what its bytes alone cannot: 200 goes into an unsigned byte and
/// not into a signed one.
template<std::integral T>
    requires(!std::same_as<T, char>)
int sysctlbyname(const char* name, T* oldp, std::size_t* oldlenp, const void* newp, std::size_t newlen) {
    return readSysctl(name, oldp, oldlenp, newp, newlen,
                      std::is_signed_v<T> ? SysctlSign::isSigned : SysctlSign::isUnsigned);
}

} // namespace vantor::platform
