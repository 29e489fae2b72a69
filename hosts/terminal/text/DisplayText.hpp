// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Texts as a terminal shows them: in columns of fixed width, of which a character takes none, one or two.
namespace vantor::hosts::terminal {

/// The columns of a character by the C library's tables (wcwidth) for the process's locale: 0 for marks that
/// sit on the character before, 2 for ideographs. A character that the locale does not know takes 1.
[[nodiscard]] int columnsOf(char32_t character);

/// The characters of a text. Bytes that are not UTF-8, control characters and bidirectional controls become
/// U+FFFD, so that nothing in a text can steer the terminal.
[[nodiscard]] std::u32string harmlessCharacters(std::string_view text);

/// The columns of a text.
[[nodiscard]] int displayWidth(std::string_view text);

/// A text cut to at most `width` columns; what is cut ends in `ellipsis`, one column wide.
[[nodiscard]] std::u32string clippedTo(std::u32string text, int width, char32_t ellipsis);

/// A text of the program without the marks of direction that a window needs in it; terminals show them.
[[nodiscard]] std::string withoutDirectionMarks(std::string text);

/// Whether a text holds letters of a script that runs from right to left.
[[nodiscard]] bool holdsRightToLeft(std::u32string_view text);

/// A UTF-8 text in the character set of the process's locale. What the set lacks becomes "?".
[[nodiscard]] std::string inLocaleCharacters(std::string_view text);

/// Whether the process's locale writes UTF-8.
[[nodiscard]] bool localeIsUtf8();

} // namespace vantor::hosts::terminal
