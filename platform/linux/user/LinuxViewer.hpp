// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/user/KeptSuite.hpp"
#include "platform/linux/user/SuiteWaiter.hpp"
#include "platform/linux/user/Translations.hpp"
#include "platform/posix/UserFolders.hpp"
#include "platform/viewer/Viewer.hpp"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// What a LinuxViewer is made of. The default is the user who runs the program.
struct ViewerOptions {
    /// Where the preferences are looked for; without any folder there are none.
    posix::UserFolders folders = posix::UserFolders::fromEnvironment();
    /// The real locale and catalogues (process-wide, see Translations.hpp); off: English and its signs.
    bool useLocale = true;
    /// Where the kernel tells what is mounted.
    KernelTree tree{"/"};
};

/// The user who runs the program: preferences from the configuration folder, language and number signs from
/// the locale. Any thread, but for the constructor: with the default options it adopts the user's locale for
/// the whole process, so make it on the main thread before others run.
class LinuxViewer final : public Viewer {
public:
    explicit LinuxViewer(ViewerOptions options = {});

    std::shared_ptr<const SuiteFile> readSuite(std::string_view suiteName) override;
    std::string suitePath(std::string_view suiteName) override;
    SuiteChange changeSuite(std::string_view suiteName, const SuiteEditor& edit) override;
    std::optional<std::string> localizedString(std::string_view key) override;
    const LocaleSigns& localeSigns() override;

private:
    [[nodiscard]] KeptSuite& suite(std::string_view name);

    const posix::UserFolders m_folders;
    LocalPaths m_paths;
    SuiteWaiter m_waiter;
    std::mutex m_mutex;
    std::map<std::string, KeptSuite, std::less<>> m_suites; ///< by name
    std::optional<Translations> m_translations;
    LocaleSigns m_signs;
};

} // namespace vantor::platform::linux
