// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vantor::platform {

/// Reads a kernel value by its name, as the BSD call of this name does. 0, or -1 and `errno`:
///
/// - unknown name: ENOENT, `*oldlenp` untouched;
/// - `oldp` null: 0, and `*oldlenp` is the size needed (of a text with its NUL);
/// - buffer too small, or no memory left to make the value in: ENOMEM, nothing copied;
/// - buffer larger: only the value's bytes are written, and `*oldlenp` becomes their number;
/// - 4 bytes for an 8-byte number: the 32-bit integer or ERANGE for most keys, ENOMEM for the cache sizes.
///
/// A number that the system keeps as text answers both kinds of reads: a buffer of 1, 2, 4 or 8 bytes is
/// taken for a numeric read, which gets 4 bytes, or 8 where 4 would not be the same number; every other
/// buffer is a text's. The size needed for its text is therefore never 1, 2, 4 or 8.
///
/// Nothing can be set: a new value is refused with EPERM. Any thread.
int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, const void* newp, std::size_t newlen);

} // namespace vantor::platform
