// SPDX-License-Identifier: MIT
#include "platform/linux/user/SuiteWaiter.hpp"

#include "platform/linux/user/SuiteReader.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <string_view>
#include <utility>

namespace vantor::platform::linux {

namespace {

enum Kind : char { absent = 'a', unusable = 'u', usable = 'c' };

std::string encoded(SuiteFile file) {
    if (!file.exists) {
        return {absent};
    }
    return file.usable ? char{usable} + std::move(file.content) : char{unusable} + std::move(file.reason);
}

SuiteFile decoded(std::string_view answer, const std::string& path) {
    SuiteFile file;
    const char kind = answer.front();
    if (kind != absent) {
        file.path = path;
        file.exists = true;
        file.usable = kind == usable;
        (file.usable ? file.content : file.reason) = answer.substr(1);
    }
    return file;
}

} // namespace

SuiteFile SuiteWaiter::read(const std::string& path) {
    dispatch_will_wait();
    const std::lock_guard lock(m_mutex);
    const auto now = std::chrono::steady_clock::now();
    if (m_asked && now - *m_asked < fresh && m_latest.path == path) {
        return m_latest;
    }
    const std::optional<std::string> answer =
        m_child.run([&path] { return encoded(readSuiteFile(path.c_str())); }, limit);
    m_latest = decoded(answer.value_or(std::string{unusable} + "its file system does not answer"), path);
    m_asked = std::chrono::steady_clock::now();
    return m_latest;
}

} // namespace vantor::platform::linux
