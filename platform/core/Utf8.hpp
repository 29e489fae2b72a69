// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Characters and their bytes in UTF-8. Pure; any thread.
namespace vantor::platform {

/// Takes a character off the front of a text that is not empty. Absent, and one byte is taken, where the
/// bytes there are none: overlong forms, surrogates and values past U+10FFFF are refused, as RFC 3629 asks.
[[nodiscard]] std::optional<char32_t> takeUtf8(std::string_view& text);

/// Appends a character. What is none, a surrogate or a value past U+10FFFF, becomes U+FFFD.
void appendUtf8(std::string& text, char32_t character);

} // namespace vantor::platform
