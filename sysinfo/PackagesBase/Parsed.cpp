// SPDX-License-Identifier: MIT
#include "sysinfo/PackagesBase/Parsed.hpp"

namespace vantor::PackagesBase {

std::string replacedOccurrences(std::string_view text, std::string_view key, std::string_view value) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = 0; !key.empty() && (at = text.find(key, from)) != std::string_view::npos;
         from = at + key.size()) {
        result.append(text.substr(from, at - from)).append(value);
    }
    return result.append(text.substr(from));
}

} // namespace vantor::PackagesBase
