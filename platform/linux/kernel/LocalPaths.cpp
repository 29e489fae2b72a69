// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/LocalPaths.hpp"

namespace vantor::platform::linux {

namespace {
constexpr std::size_t mostVerdicts = 64;
}

LocalPaths::LocalPaths(const KernelTree& tree) : m_tree(tree), m_watch(tree) {}

void LocalPaths::look() {
    const auto now = std::chrono::steady_clock::now();
    if (m_looked && now - *m_looked < fresh) {
        return;
    }
    m_looked = now;
    if (m_watch.changed()) {
        m_table = MountTable(m_tree.read("proc/self/mountinfo").text);
        m_verdicts.clear();
    }
}

bool LocalPaths::isLocal(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    look();
    const auto known = m_verdicts.find(path);
    if (known != m_verdicts.end()) {
        return known->second;
    }
    if (m_verdicts.size() == mostVerdicts) {
        m_verdicts.clear();
    }
    return m_verdicts[path] = m_table.isLocal(path);
}

} // namespace vantor::platform::linux
