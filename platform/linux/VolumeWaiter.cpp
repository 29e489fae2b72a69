// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeWaiter.hpp"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace vantor::platform::linux {

struct VolumeWaiter::Query {
    std::mutex mutex;
    std::condition_variable answered;
    bool done = false;
    Result result;
};

VolumeWaiter::Result VolumeWaiter::ask(const std::string& path) {
    const auto failed = [&path](const char* why) { return Result{{std::nullopt, path + ": " + why}, false}; };
    if (m_hanging) {
        const std::lock_guard lock(m_hanging->mutex);
        if (!m_hanging->done) {
            return failed("the volume does not answer");
        }
    }
    m_hanging.reset(); // a late answer is an old one
    const auto query = std::make_shared<Query>();
    try {
        std::thread([query, path] {
            Result result;
            result.answer = queryVolume(path);
            result.local = result.answer.figures && isOnLocalFileSystem(path);
            const std::lock_guard lock(query->mutex);
            query->result = std::move(result);
            query->done = true;
            query->answered.notify_one();
        }).detach();
    } catch (const std::system_error&) {
        return failed("no thread to ask for the volume with");
    }
    std::unique_lock lock(query->mutex);
    if (!query->answered.wait_for(lock, limit, [&query] { return query->done; })) {
        m_hanging = query;
        return failed("the volume did not answer within a second");
    }
    return std::move(query->result);
}

} // namespace vantor::platform::linux
