// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vantor::platform {

/// A language's words for byte counts.
struct ByteCountWords {
    std::string_view language;             ///< the primary subtag: "fr"
    std::array<std::string_view, 6> units; ///< KB to EB
    std::string_view zero;                 ///< the whole text of a zero count; empty: the digit and the unit
    std::string_view one;                  ///< the word for one byte
    std::string_view few;                  ///< for 2 to 4, 22 to 24, … where the language sets these apart
    std::string_view many;                 ///< for all other counts
    bool oneEndsWithOne;                   ///< `one` also stands for 21, 31, … 101, but not 11 or 111
    bool bytesFollowBlank;                 ///< whether a blank stands between the count and the word
};

/// The words of a language tag such as "pt-BR"; English symbols for a language that is not known.
[[nodiscard]] const ByteCountWords& byteCountWords(std::string_view language);

/// The word that follows so many bytes.
[[nodiscard]] std::string_view byteWord(const ByteCountWords& words, std::uint64_t count);

} // namespace vantor::platform
