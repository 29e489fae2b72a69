// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/Printer.hpp"

#include <string>

namespace vantor::SystemValues {

void writeLogLine(std::FILE* stream, std::string_view prefix, std::string_view text) {
    const std::string line = std::string(prefix).append(" ").append(text).append("\n");
    std::fwrite(line.data(), 1, line.size(), stream != nullptr ? stream : stdout);
}

} // namespace vantor::SystemValues
