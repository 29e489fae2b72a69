// SPDX-License-Identifier: MIT
#include "platform/linux/user/LinuxViewer.hpp"

#include "platform/linux/user/SuiteReader.hpp"
#include "platform/linux/user/SuiteWriter.hpp"
#include "platform/linux/user/UserLocale.hpp"

#include <utility>

namespace vantor::platform::linux {

LinuxViewer::LinuxViewer(ViewerOptions options)
    : m_folders(std::move(options.folders)), m_paths(options.tree) {
    if (options.useLocale) {
        adoptUserLocale();
        m_signs = currentLocaleSigns();
        // English is built in. Without this a LANGUAGE such as "en:de" would pass the missing English
        // catalogue over.
        if (m_signs.language != "en") {
            m_translations.emplace();
        }
    }
}

SuiteFile LinuxViewer::readSuite(std::string_view suiteName) {
    const std::string path = linux::suitePath(m_folders, suiteName);
    if (path.empty()) {
        return {};
    }
    return m_paths.isLocal(path) ? readSuiteFile(path.c_str()) : m_waiter.read(path);
}

std::string LinuxViewer::suitePath(std::string_view suiteName) {
    return linux::suitePath(m_folders, suiteName);
}

SuiteChange LinuxViewer::changeSuite(std::string_view suiteName, const SuiteEditor& edit) {
    return changeSuiteFile(linux::suitePath(m_folders, suiteName), edit);
}

std::optional<std::string> LinuxViewer::localizedString(std::string_view key) {
    return m_translations ? m_translations->text(key) : std::nullopt;
}

const LocaleSigns& LinuxViewer::localeSigns() {
    return m_signs;
}

} // namespace vantor::platform::linux
