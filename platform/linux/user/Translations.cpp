// SPDX-License-Identifier: MIT
#include "platform/linux/user/Translations.hpp"

#include "platform/linux/kernel/Folder.hpp"

#include <libintl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace vantor::platform::linux {

namespace {

namespace fs = std::filesystem;
constexpr const char* domain = "vantor";

/// Whether any language's folder below holds a catalogue of ours: other programs share the folder.
bool holdsCatalogues(const std::string& path) {
    Folder folder(path);
    while (const char* const language = folder.next()) {
        const std::string catalogue = path + '/' + language + "/LC_MESSAGES/vantor.mo";
        if (::access(catalogue.c_str(), F_OK) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string catalogueFolder(const std::string& program) {
    constexpr int levels = 5; // a build tree's programs lie a few folders below its root
    fs::path folder = fs::path(program).parent_path();
    for (int i = 0; i < levels && folder.has_relative_path(); ++i) {
        folder = folder.parent_path();
        if (const fs::path candidate = folder / "share/locale"; holdsCatalogues(candidate)) {
            return candidate.string();
        }
    }
    return VANTOR_LOCALE_FOLDER;
}

Translations::Translations() {
    std::error_code error;
    m_folder = catalogueFolder(fs::read_symlink("/proc/self/exe", error).string());
    ::bindtextdomain(domain, m_folder.c_str());
    ::bind_textdomain_codeset(domain, "UTF-8");
}

std::optional<std::string> Translations::text(std::string_view key) {
    const std::string msgid(key);
    if (msgid.empty()) {
        return std::nullopt; // the empty msgid's text is the catalogue's own heading
    }
    const char* const translated = ::dgettext(domain, msgid.c_str());
    // Without a translation gettext hands back the very pointer that it was given.
    return translated == msgid.c_str() ? std::nullopt : std::optional<std::string>(translated);
}

std::optional<std::string> Translations::language() {
    constexpr std::string_view field = "\nLanguage: ";
    const std::string_view heading = ::dgettext(domain, "");
    const std::size_t start = heading.find(field);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = heading.substr(start + field.size());
    return std::string(name.substr(0, name.find('\n')));
}

} // namespace vantor::platform::linux
