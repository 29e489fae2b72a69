// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/Viewer.hpp"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace vantor::platform {

/// Everything that a viewer can be asked, as plain values.
struct SimulatedViewerState {
    SuiteFile suite;
    std::map<std::string, std::string, std::less<>> texts; ///< captions by key
    LocaleSigns signs;
};

/// A viewer whose answers are written down. Without a state: no preferences, English. Any thread.
class SimulatedViewer final : public Viewer {
public:
    /// `opening` is called before each reading of the preferences, under the lock: it notes the order of the
    /// questions.
    explicit SimulatedViewer(SimulatedViewerState state = {}, std::function<void()> opening = {})
        : m_state(std::move(state)), m_opening(std::move(opening)) {}

    /// Changes the state between two questions.
    void change(const std::function<void(SimulatedViewerState& state)>& with);

    std::shared_ptr<const SuiteFile> readSuite(std::string_view suiteName) override;
    std::string suitePath(std::string_view suiteName) override;
    /// Changes the state's file; a file set aside is gone.
    SuiteChange changeSuite(std::string_view suiteName, const SuiteEditor& edit) override;
    std::optional<std::string> localizedString(std::string_view key) override;
    const LocaleSigns& localeSigns() override { return m_state.signs; } // constant once it is in place

private:
    std::mutex m_mutex;
    SimulatedViewerState m_state;
    std::function<void()> m_opening;
};

} // namespace vantor::platform
