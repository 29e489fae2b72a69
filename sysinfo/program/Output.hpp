// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vantor::sysinfo {

/// What standard output can show.
struct Look {
    bool bold = false;
    std::size_t width = 0; ///< columns; 0: no limit

    /// A terminal's; plain and without a limit for everything else. Bold is left out where the variable
    /// NO_COLOR is set or the terminal is a dumb one.
    [[nodiscard]] static Look ofStandardOutput();
};

/// One line on standard error, after the program's name.
void complain(const std::string& what);

/// To standard output; waits for a slow reader.
void put(const std::string& text);

/// Whether all that was put, or written to std::cout, has arrived.
[[nodiscard]] bool wasWritten();

} // namespace vantor::sysinfo
