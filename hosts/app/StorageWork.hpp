// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"
#include "hosts/app/Worker.hpp"
#include "pages/StoragePage.hpp"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::hosts::app {

using KeepGoing = platform::Disposal::KeepGoing;

/// What would be deleted, and what deletes exactly that.
struct Listing {
    std::vector<std::string> lines; ///< one a thing, printable
    std::uint64_t bytes = 0;
    std::function<Released(const KeepGoing&)> run;
};

/// What the storage page has done on a worker: counting, listing and deleting, one after the other. Each can
/// be stopped at its next entry. Main thread.
class StorageWork {
public:
    explicit StorageWork(std::function<std::int64_t()> now);
    ~StorageWork();
    StorageWork(const StorageWork&) = delete;
    StorageWork& operator=(const StorageWork&) = delete;

    void count(std::function<void(const std::optional<StoragePage>&)> heard);
    void listTrash(std::function<void(const Listing&)> heard);
    /// Of the caches of a count.
    [[nodiscard]] static Listing listOf(const std::vector<platform::CacheItem>& caches);
    void run(const Listing& listing, std::function<void(const Released&)> heard);
    /// Ends what is being done at its next entry.
    void stop();
    [[nodiscard]] bool isBusy() const { return m_busy > 0; }

private:
    template<class Work, class Heard>
    void submit(Work work, Heard heard);

    std::function<std::int64_t()> m_now;
    Alive m_alive = std::make_shared<bool>(true);
    std::shared_ptr<std::atomic<bool>> m_stopped;
    int m_busy = 0;
};

} // namespace vantor::hosts::app
