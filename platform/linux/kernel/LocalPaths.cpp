// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/LocalPaths.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/posix/BoundedChild.hpp"

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

std::optional<std::string> LocalPaths::ask(const std::string& path, const std::function<std::string()>& work,
                                           std::chrono::milliseconds limit) {
    if (isLocal(path)) {
        return work();
    }
    // A child that says nothing counts as broken: the sign tells an empty text.
    std::optional<std::string> answer = posix::runInChild([&work] { return '+' + work(); }, limit);
    return answer ? std::optional(answer->substr(1)) : std::nullopt;
}

bool LocalPaths::answers(const std::string& folder, std::chrono::milliseconds limit) {
    const auto look = [&folder] {
        (void)Folder(folder).next(); // a name may still be known from before, what is in it is asked for
        return std::string();
    };
    return isLocal(folder) || ask(folder, look, limit).has_value();
}

} // namespace vantor::platform::linux
