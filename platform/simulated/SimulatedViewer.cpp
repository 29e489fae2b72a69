// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedViewer.hpp"

namespace vantor::platform {

void SimulatedViewer::change(const std::function<void(SimulatedViewerState& state)>& with) {
    const std::scoped_lock lock(m_mutex);
    with(m_state);
}

std::shared_ptr<const SuiteFile> SimulatedViewer::readSuite(std::string_view /*suiteName*/) {
    const std::scoped_lock lock(m_mutex);
    if (m_opening) {
        m_opening();
    }
    return std::make_shared<const SuiteFile>(m_state.suite);
}

std::string SimulatedViewer::suitePath(std::string_view /*suiteName*/) {
    const std::scoped_lock lock(m_mutex);
    return m_state.suite.path;
}

SuiteChange SimulatedViewer::changeSuite(std::string_view /*suiteName*/, const SuiteEditor& edit) {
    const std::scoped_lock lock(m_mutex);
    SuiteFile& suite = m_state.suite;
    SuiteEdit made = edit(suite);
    if (!made.content) {
        return {.failure = std::move(made.refusal), .couldBeSetAside = made.couldBeSetAside};
    }
    suite = {suite.path, std::move(*made.content), true, true, {}};
    return {.changed = true, .setAside = made.setAside ? suite.path + ".broken" : ""};
}

std::optional<std::string> SimulatedViewer::localizedString(std::string_view key) {
    const std::scoped_lock lock(m_mutex);
    const auto text = m_state.texts.find(key);
    return text == m_state.texts.end() ? std::nullopt : std::optional(text->second);
}

} // namespace vantor::platform
