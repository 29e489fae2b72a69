// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantor::platform {

/// A text from outside (interface, device, host or file name, preference string) made harmless for a log
/// line, a label or a terminal: valid UTF-8, no control characters (C0, DEL, C1), no line or paragraph
/// separators, no bidirectional controls. Each offending byte or character becomes U+FFFD; past `longest`
/// bytes the text is cut at a character and ends in an ellipsis. Pure; any thread.
[[nodiscard]] std::string printableText(std::string_view text, std::size_t longest = 256);

} // namespace vantor::platform
