// SPDX-License-Identifier: MIT
#include "platform/linux/user/UserLocale.hpp"

#include "platform/posix/Environment.hpp"

#include <iconv.h>
#include <langinfo.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <optional>

// NOLINTBEGIN(concurrency-mt-unsafe): called once, before other threads run

namespace vantor::platform::linux {

namespace {

bool isPlain(std::string_view locale) {
    return locale.empty() || locale == "C" || locale == "POSIX" || locale.starts_with("C.");
}

/// A short text of the current locale in UTF-8; absent where it cannot be converted.
std::optional<std::string> inUtf8(const char* text) {
    const iconv_t converter = ::iconv_open("UTF-8", ::nl_langinfo(CODESET));
    if (text == nullptr || converter == reinterpret_cast<iconv_t>(-1)) { // NOLINT(performance-no-int-to-ptr)
        return std::nullopt;
    }
    std::string from = text;
    std::array<char, 64> to{};
    char* input = from.data();
    char* output = to.data();
    std::size_t inputLeft = from.size();
    std::size_t outputLeft = to.size();
    const bool converted =
        ::iconv(converter, &input, &inputLeft, &output, &outputLeft) != static_cast<std::size_t>(-1);
    ::iconv_close(converter);
    return converted ? std::optional(std::string(to.data(), output)) : std::nullopt;
}

/// glibc's digits for people, which a locale may declare beside 0 to 9 (LC_CTYPE outdigit).
void takeDigits(LocaleSigns& signs) {
#ifdef __GLIBC__
    std::array<std::string, 10> digits;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const auto item = static_cast<nl_item>(_NL_CTYPE_OUTDIGIT0_MB + static_cast<int>(i));
        const std::optional<std::string> digit = inUtf8(::nl_langinfo(item));
        if (!digit || digit->empty()) {
            return;
        }
        digits[i] = *digit;
    }
    signs.digits = digits;
#endif
}

} // namespace

std::string requestedLocale(const char* category) {
    for (const char* const name : {"LC_ALL", category, "LANG"}) {
        if (std::string value = posix::environmentText(name); !value.empty()) {
            return value;
        }
    }
    return {};
}

void adoptUserLocale() {
    if (std::setlocale(LC_ALL, "") != nullptr) {
        return;
    }
    // One category that was not generated fails them all: take those that were.
    for (const int category : {LC_CTYPE, LC_NUMERIC, LC_TIME, LC_COLLATE, LC_MONETARY, LC_MESSAGES}) {
        if (std::setlocale(category, "") != nullptr) {
            continue;
        }
        // Since glibc 2.39 gettext passes LANGUAGE over in "C.UTF-8" as well; most machines have American
        // English.
        const bool stoodIn = category == LC_MESSAGES && std::setlocale(category, "en_US.UTF-8") != nullptr;
        if (!stoodIn && (category == LC_CTYPE || category == LC_MESSAGES)) {
            std::setlocale(category, "C.UTF-8");
        }
    }
    const std::string request = requestedLocale("LC_MESSAGES");
    if (!isPlain(request) && posix::environmentText("LANGUAGE").empty()) {
        ::setenv("LANGUAGE", request.substr(0, request.find_first_of(".@")).c_str(), 1);
    }
}

std::string languageTag(std::string_view locale) {
    locale = locale.substr(0, locale.find_first_of(".@:"));
    const std::size_t split = locale.find_first_of("_-");
    const std::string_view language = locale.substr(0, split);
    const std::string_view region =
        split == std::string_view::npos ? std::string_view() : locale.substr(split + 1);
    const bool letters =
        std::all_of(language.begin(), language.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    if (!letters || language.size() < 2 || language.size() > 3) {
        return "en";
    }
    if (language == "zh") {
        const bool traditional = region == "TW" || region == "HK" || region == "MO" || region == "Hant";
        return traditional ? "zh-Hant" : "zh-Hans";
    }
    return language == "pt" && region == "BR" ? "pt-BR" : std::string(language);
}

LocaleSigns currentLocaleSigns() {
    LocaleSigns signs;
    const std::string request = requestedLocale("LC_MESSAGES");
    // As gettext does it: in the "C" locale LANGUAGE counts for nothing, in "C.UTF-8" it may.
    const bool isC = request.empty() || request == "C" || request == "POSIX";
    const std::string preferred = isC ? std::string() : posix::environmentText("LANGUAGE");
    signs.language = languageTag(preferred.empty() ? request : preferred);
    const char* const numeric = std::setlocale(LC_NUMERIC, nullptr);
    if (isPlain(numeric != nullptr ? numeric : "C")) {
        return signs;
    }
    const lconv* const convention = std::localeconv();
    if (const std::optional<std::string> decimal = inUtf8(convention->decimal_point);
        decimal && !decimal->empty()) {
        signs.decimal = *decimal;
    }
    signs.grouping = inUtf8(convention->thousands_sep).value_or("");
    takeDigits(signs);
    return signs;
}

} // namespace vantor::platform::linux

// NOLINTEND(concurrency-mt-unsafe)
