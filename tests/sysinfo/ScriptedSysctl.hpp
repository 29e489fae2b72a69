// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sysctl/SysctlSource.hpp"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace vantor::tests {

/// A source of made-up values that remembers what it was asked. In place while it lives.
class ScriptedSysctl final : public platform::SysctlSource {
public:
    using Values = std::map<std::string, platform::SysctlAnswer, std::less<>>;
    explicit ScriptedSysctl(Values values) : m_values(std::move(values)) {}

    platform::SysctlAnswer read(std::string_view key) override {
        const std::scoped_lock lock(m_mutex);
        m_asked.emplace_back(key);
        const auto found = m_values.find(key);
        platform::SysctlAnswer answer = found != m_values.end() ? found->second : platform::SysctlAnswer();
        if (m_gone == key) {
            m_values.erase(m_gone);
        }
        return answer;
    }
    std::vector<std::string> keys(std::string_view name) override {
        std::vector<std::string> found;
        for (const auto& [key, value] : m_values) {
            if (key.starts_with(name)) {
                found.push_back(key);
            }
        }
        return found;
    }
    /// The keys asked for since the last call.
    std::vector<std::string> asked() {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_asked, {});
    }
    /// The key answers once more, and then no longer.
    void vanishAfterNext(const std::string& key) { m_gone = key; }

private:
    std::mutex m_mutex;
    Values m_values;
    std::vector<std::string> m_asked;
    std::string m_gone;
    platform::Current<platform::SysctlSource> m_scope{*this};
};

inline platform::SysctlAnswer text(const char* value) {
    return platform::SysctlValue::ofText(value);
}
inline platform::SysctlAnswer number(std::uint32_t value) {
    return platform::SysctlValue::of4(value);
}

} // namespace vantor::tests
