// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// The user's language's texts, from gettext catalogues of the domain "vantor". Which language is gettext's
/// choice, by the process's locale and LANGUAGE.
class Translations {
public:
    /// Binds the domain (process-wide) to the first folder that holds a catalogue of it: share/locale beside
    /// the program's bin folder; that of the build tree that the program lies in; the one it was to be
    /// installed to.
    Translations();

    /// The text of a key in UTF-8; absent where no catalogue has it. Any thread.
    [[nodiscard]] static std::optional<std::string> text(std::string_view key);

    /// The language that texts really are in, as the catalogue found names it ("pt_BR"); absent where none
    /// was found, and the texts are the built-in English ones. Any thread.
    [[nodiscard]] static std::optional<std::string> language();

private:
    std::string m_folder;
};

/// Where to look for a program's catalogues, in this order, given the program's own path. Pure.
[[nodiscard]] std::string catalogueFolder(const std::string& program);

} // namespace vantor::platform::linux
