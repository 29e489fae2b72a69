// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FileWatch.hpp"
#include "settings/SettingState.hpp"
#include "settings/StoreWriter.hpp"

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::hosts::app {

/// What the preference file holds, as it was found last.
struct SettingsFound {
    std::string path;
    std::vector<SettingState> states;
    std::optional<std::string> problem; ///< why the file cannot be used; the usual values hold then
    std::optional<std::string> failure; ///< why the last change was not written
    bool couldBeSetAside = false;       ///< the file holds no preferences, and may be kept elsewhere
    std::string setAside;               ///< where it was, after the last change
};

/// The preference file as the settings page has it: read and written on a worker, and read again when
/// somebody else changes it. Main thread.
class SettingsFile {
public:
    using Heard = std::function<void(const SettingsFound&)>;

    /// `heard` hears what is found, in a turn of the main loop.
    explicit SettingsFile(Heard heard);
    ~SettingsFile();
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    /// Reads the file, and from then on again after each change while `on`.
    void follow(bool on);
    /// Writes changes, all of them or none, and reads again.
    void write(std::vector<SettingChange> changes, BrokenStore broken = BrokenStore::leave);

private:
    void read();
    void submit(std::function<SettingsFound()> work);

    Heard m_heard;
    std::shared_ptr<bool> m_alive;
    std::optional<common::FileWatch> m_watch;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_settling;
};

} // namespace vantor::hosts::app
