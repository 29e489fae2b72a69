// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <system_error>

namespace vantor::SystemValues {

/// The bytes of a file, or why there are none.
struct PlainFile {
    std::string bytes;
    std::error_code error;

    /// A whole file of 16 MiB at most, which is more than any kernel parameter: what has no end stops there.
    /// Only plain files are opened: a pipe would block, and reading a device may change it.
    [[nodiscard]] static PlainFile read(const std::string& path);
};

} // namespace vantor::SystemValues
