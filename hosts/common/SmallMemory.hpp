// SPDX-License-Identifier: MIT
#pragma once

#include <malloc.h>

namespace vantor::hosts::common {

/// For programs of a few threads that mostly sleep: one arena for all, and freed memory goes back early.
/// Before there are other threads.
inline void keepMemorySmall() {
    constexpr int kept = 128 * 1024; // bytes
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, kept);
    ::mallopt(M_MMAP_THRESHOLD, kept);
}

} // namespace vantor::hosts::common
