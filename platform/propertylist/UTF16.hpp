// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vantor::platform {

/// Appends big-endian UTF-16 (an even number of bytes) as UTF-8. Half of a surrogate pair becomes U+FFFD.
void appendUTF16(std::string& text, std::string_view bytes);

/// UTF-8 as big-endian UTF-16. Bytes that are no character become U+FFFD.
[[nodiscard]] std::string bytesOfUTF16(std::string_view text);

} // namespace vantor::platform
