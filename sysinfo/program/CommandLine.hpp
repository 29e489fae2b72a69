// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::sysinfo {

/// The program: 0, 1 where a value that was asked for is absent or standard output cannot be written, 2 for
/// bad usage or a file that cannot be used.
[[nodiscard]] int run(int count, const char* const* arguments);

} // namespace vantor::sysinfo
