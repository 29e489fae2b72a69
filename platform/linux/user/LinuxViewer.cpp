// SPDX-License-Identifier: MIT
#include "platform/linux/user/LinuxViewer.hpp"

#include "platform/linux/user/SuiteReader.hpp"
#include "platform/linux/user/SuiteWriter.hpp"
#include "platform/linux/user/UserLocale.hpp"

#include <chrono>
#include <utility>

namespace vantor::platform::linux {

namespace {

/// For the way from one process to another; no path has a zero in it.
std::string encoded(const SuiteChange& change) {
    std::string text{change.changed ? '1' : '0', change.couldBeSetAside ? '1' : '0',
                     change.failure ? '1' : '0'};
    return text + change.setAside + '\0' + change.failure.value_or("");
}

SuiteChange decoded(std::string_view text) {
    const std::size_t end = text.find('\0');
    SuiteChange change{.changed = text[0] == '1',
                       .setAside = std::string(text.substr(3, end - 3)),
                       .couldBeSetAside = text[1] == '1'};
    if (text[2] == '1') {
        change.failure = text.substr(end + 1);
    }
    return change;
}

} // namespace

LinuxViewer::LinuxViewer(ViewerOptions options)
    : m_folders(std::move(options.folders)), m_paths(options.tree) {
    if (options.useLocale) {
        adoptUserLocale();
        m_signs = currentLocaleSigns();
        // English is built in. Without this a LANGUAGE such as "en:de" would pass the missing English
        // catalogue over.
        if (m_signs.language != "en") {
            m_translations.emplace();
            // Units and texts in one language, where gettext chose another one, or none.
            m_signs.language = languageTag(m_translations->language().value_or("en"));
        }
    }
}

KeptSuite& LinuxViewer::suite(std::string_view name) {
    const std::lock_guard lock(m_mutex);
    const auto known = m_suites.find(name);
    return known != m_suites.end()
               ? known->second
               : m_suites.try_emplace(std::string(name), linux::suitePath(m_folders, name)).first->second;
}

std::shared_ptr<const SuiteFile> LinuxViewer::readSuite(std::string_view suiteName) {
    KeptSuite& kept = suite(suiteName);
    if (kept.path().empty() || m_paths.isLocal(kept.path())) {
        return kept.read(std::chrono::system_clock::now().time_since_epoch());
    }
    return std::make_shared<const SuiteFile>(m_waiter.read(kept.path()));
}

std::string LinuxViewer::suitePath(std::string_view suiteName) {
    return linux::suitePath(m_folders, suiteName);
}

SuiteChange LinuxViewer::changeSuite(std::string_view suiteName, const SuiteEditor& edit) {
    constexpr std::chrono::seconds limit{5}; // one of them may be spent waiting for another writer
    const std::string path = linux::suitePath(m_folders, suiteName);
    const std::optional<std::string> change = m_paths.ask(
        path, [&] { return encoded(changeSuiteFile(path, edit)); }, limit);
    return change ? decoded(*change) : SuiteChange{.failure = path + ": its file system does not answer"};
}

std::optional<std::string> LinuxViewer::localizedString(std::string_view key) {
    return m_translations ? m_translations->text(key) : std::nullopt;
}

const LocaleSigns& LinuxViewer::localeSigns() {
    return m_signs;
}

} // namespace vantor::platform::linux
