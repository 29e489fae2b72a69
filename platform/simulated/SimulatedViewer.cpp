// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedViewer.hpp"

namespace vantor::platform {

void SimulatedViewer::change(const std::function<void(SimulatedViewerState& state)>& with) {
    const std::scoped_lock lock(m_mutex);
    with(m_state);
}

SuiteFile SimulatedViewer::readSuite(std::string_view /*suiteName*/) {
    const std::scoped_lock lock(m_mutex);
    if (m_opening) {
        m_opening();
    }
    return m_state.suite;
}

std::optional<std::string> SimulatedViewer::localizedString(std::string_view key) {
    const std::scoped_lock lock(m_mutex);
    const auto text = m_state.texts.find(key);
    return text == m_state.texts.end() ? std::nullopt : std::optional(text->second);
}

} // namespace vantor::platform
