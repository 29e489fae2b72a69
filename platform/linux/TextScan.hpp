// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The few steps that every parser of kernel text is made of. Pure, bounded by the text's length, no
/// allocation, never throw.
namespace vantor::platform::linux_machine {

/// One line of a text, without its line feed.
struct Line {
    std::string_view text;
    bool ended = false; ///< false: the text stopped before a line feed, so the line may be cut short
};

/// Takes the first line off a text; absent at the end.
[[nodiscard]] std::optional<Line> takeLine(std::string_view& text);

/// Takes leading blanks and tabs off.
void skipBlanks(std::string_view& text);

/// Takes a word (all bytes up to a blank or tab) with the blanks before it off a text; empty at the end.
[[nodiscard]] std::string_view takeWord(std::string_view& text);

/// A whole word as an unsigned decimal number: digits only. Absent for signs, other bytes, nothing at all and
/// what does not fit in 64 bits: a figure that cannot be read is not a figure.
[[nodiscard]] std::optional<std::uint64_t> numberFrom(std::string_view word);

/// `takeWord` and `numberFrom` in one.
[[nodiscard]] std::optional<std::uint64_t> takeNumber(std::string_view& text);

} // namespace vantor::platform::linux_machine
