// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vantor::platform {

/// A text of the program in the viewer's language: the viewer's translation, else the English one built in.
/// Every key in use is in the table of English texts, so that no key is ever shown; for any other key the
/// result is the key itself. Texts may hold placeholders in braces ("{name}"), the same in every language.
/// Any thread.
[[nodiscard]] std::string NSLocalizedString(std::string_view key);

struct EnglishText {
    std::string_view key;
    std::string_view text;
};

/// The English texts, in the order of their keys. They are the program's own and come with its resources, so
/// that this floor knows none of them.
[[nodiscard]] std::span<const EnglishText> englishTexts();

/// A text with "{name}" replaced wherever it occurs. What is put in is not searched again.
[[nodiscard]] std::string textWithValue(std::string_view text, std::string_view name, std::string_view value);

} // namespace vantor::platform
