// SPDX-License-Identifier: MIT
#include "hosts/app/SettingsFile.hpp"

#include "hosts/app/Worker.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "platform/viewer/Viewer.hpp"

#include <chrono>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr std::chrono::milliseconds untilSettled{100}; // a writer takes several steps

SettingsFound found() {
    SettingsFound all;
    all.path = platform::currentViewer().suitePath(sharedSuiteName);
    all.states = settingStates();
    all.problem = platform::suiteProblem();
    if (all.problem) {
        // Changes nothing: asked for no change, a file that holds no preferences says that it could be kept.
        all.couldBeSetAside = changeStore({}).couldBeSetAside;
    }
    return all;
}

SettingsFound writtenAndFound(const std::vector<SettingChange>& changes, BrokenStore broken) {
    const StoreOutcome outcome = changeStore(changes, broken);
    SettingsFound all = found();
    all.failure = outcome.failure;
    all.setAside = outcome.setAside;
    return all;
}

} // namespace

SettingsFile::SettingsFile(Heard heard) : m_heard(std::move(heard)), m_alive(std::make_shared<bool>(true)) {
    m_settling.setSingleShot(true);
    m_settling.setInterval(untilSettled);
    m_settling.callOnTimeout([this] { read(); });
}

SettingsFile::~SettingsFile() = default;

void SettingsFile::follow(bool on) {
    m_notifier.reset();
    m_watch.reset();
    m_settling.stop();
    if (!on) {
        return;
    }
    read();
    const std::string path = platform::currentViewer().suitePath(sharedSuiteName);
    if (path.empty()) {
        return;
    }
    m_watch.emplace(path);
    if (m_watch->number() >= 0) {
        m_notifier = std::make_unique<QSocketNotifier>(m_watch->number(), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
            m_watch->settle();
            m_settling.start();
        });
    }
}

void SettingsFile::read() {
    submit([] { return found(); });
}

void SettingsFile::write(std::vector<SettingChange> changes, BrokenStore broken) {
    submit([changes = std::move(changes), broken] { return writtenAndFound(changes, broken); });
}

void SettingsFile::submit(std::function<SettingsFound()> work) {
    onWorker(m_alive, std::move(work), [this](const SettingsFound& all) { m_heard(all); });
}

} // namespace vantor::hosts::app
