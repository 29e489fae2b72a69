// SPDX-License-Identifier: MIT
#include "hosts/app/StorageWork.hpp"

#include "actions/EmptyTrash.hpp"
#include "actions/ReleaseCaches.hpp"
#include "controller/ByteText.hpp"
#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <limits>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr std::size_t longestLine = 4096; // bytes

std::string lineOf(std::uint64_t bytes, const std::string& what) {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return storageText(static_cast<std::int64_t>(std::min(bytes, most))) + "  " + what;
}

} // namespace

StorageWork::StorageWork(std::function<std::int64_t()> now)
    : m_now(std::move(now)), m_stopped(std::make_shared<std::atomic<bool>>(false)) {}

StorageWork::~StorageWork() {
    *m_stopped = true;
}

void StorageWork::stop() {
    *m_stopped = true;
    m_stopped = std::make_shared<std::atomic<bool>>(false);
}

template<class Work, class Heard>
void StorageWork::submit(Work work, Heard heard) {
    ++m_busy;
    onWorker(
        m_alive,
        [work = std::move(work), stopped = m_stopped] {
            return work(KeepGoing([stopped] { return !*stopped; }));
        },
        [this, heard = std::move(heard)](const auto& result) {
            --m_busy;
            heard(result);
        });
}

void StorageWork::count(std::function<void(const std::optional<StoragePage>&)> heard) {
    submit([now = m_now()](const KeepGoing& keepGoing) { return storagePage(now, keepGoing); },
           std::move(heard));
}

void StorageWork::listTrash(std::function<void(const Listing&)> heard) {
    submit(
        [](const KeepGoing& keepGoing) {
            auto trash = std::make_shared<const EmptyTrash>(std::nullopt, keepGoing);
            Listing listing;
            for (const platform::TrashItem& item : trash->items()) {
                listing.lines.push_back(lineOf(item.bytes, item.origin));
            }
            listing.bytes = trash->bytes();
            listing.run = [trash](const KeepGoing& going) { return trash->run(going); };
            return listing;
        },
        std::move(heard));
}

Listing StorageWork::listOf(const std::vector<platform::CacheItem>& caches) {
    auto release = std::make_shared<const ReleaseCaches>(caches);
    Listing listing;
    for (const platform::CacheItem& item : release->items()) {
        for (const platform::CacheFolder& folder : item.folders) {
            listing.lines.push_back(platform::printableText(item.name + "  " + folder.path, longestLine));
        }
    }
    listing.bytes = release->bytes();
    listing.run = [release](const KeepGoing& keepGoing) { return release->run(keepGoing); };
    return listing;
}

void StorageWork::run(const Listing& listing, std::function<void(const Released&)> heard) {
    submit([run = listing.run](const KeepGoing& keepGoing) { return run(keepGoing); }, std::move(heard));
}

} // namespace vantor::hosts::app
