// SPDX-License-Identifier: MIT
#include "platform/linux/user/LinuxViewer.hpp"

#include "platform/linux/user/SuiteReader.hpp"
#include "platform/linux/user/UserLocale.hpp"

#include <utility>

namespace vantor::platform::linux {

LinuxViewer::LinuxViewer(ViewerOptions options) : m_folders(std::move(options.folders)) {
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
    const std::string path = suitePath(m_folders, suiteName);
    SuiteFile file = path.empty() ? SuiteFile() : readSuiteFile(path.c_str());
    const std::scoped_lock lock(m_mutex);
    m_failure.reset();
    if (file.exists && !file.usable) {
        m_failure = file.path + ": " + file.reason;
    }
    return file;
}

std::optional<std::string> LinuxViewer::localizedString(std::string_view key) {
    return m_translations ? m_translations->text(key) : std::nullopt;
}

const LocaleSigns& LinuxViewer::localeSigns() {
    return m_signs;
}

std::optional<std::string> LinuxViewer::preferencesFailure() {
    const std::scoped_lock lock(m_mutex);
    return m_failure;
}

} // namespace vantor::platform::linux
