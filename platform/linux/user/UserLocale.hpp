// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/LocaleSigns.hpp"

#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// The locale that the environment asks for in one category (LC_ALL, then the category's variable, then
/// LANG); empty where it asks for none.
[[nodiscard]] std::string requestedLocale(const char* category);

/// Puts the environment's locale in place for the whole process. Where it was not generated on this machine
/// the texts still follow it where they can: "en_US.UTF-8" or "C.UTF-8", whichever was generated, and a
/// LANGUAGE made of the request stand in. Since glibc 2.39 gettext looks at LANGUAGE in the first alone; with
/// the second the texts are English there. Call it on the main thread before others run: it changes the
/// process's locale, and LANGUAGE where that was not set.
void adoptUserLocale();

/// The language tag of a locale's name: "pt_BR.UTF-8" is "pt-BR", "zh_CN" "zh-Hans", "zh_TW" "zh-Hant", other
/// regions fall away ("de_AT@euro" is "de"). "C", "POSIX" and what is no language are "en". Pure.
[[nodiscard]] std::string languageTag(std::string_view locale);

/// The language asked for (the first of LANGUAGE, else the requested message locale), and the signs
/// of the numeric locale in place now, in UTF-8. In the "C" locale the signs are English.
[[nodiscard]] LocaleSigns currentLocaleSigns();

} // namespace vantor::platform::linux
