// SPDX-License-Identifier: MIT
#include "platform/simulated/DemoDisposal.hpp"

#include <array>
#include <utility>

namespace vantor::platform {

namespace {

constexpr std::uint64_t megabyte = 1'000'000;
constexpr std::int64_t longAgo = 1'690'000'000, lately = 1'699'900'000; // seconds since 1970

struct DemoCache {
    const char* name;
    CacheKind kind;
    CacheNature nature;
    std::uint64_t megabytes;
    std::int64_t used;
};

/// With the trash they are the 13 gigabytes that the machine's volume could be given back.
constexpr std::array<DemoCache, 7> caches{{
    {"Hugging Face", CacheKind::costly, CacheNature::models, 4200, lately},
    {"Chromium", CacheKind::harmless, CacheNature::pages, 2100, lately},
    {"ccache", CacheKind::harmless, CacheNature::builds, 1500, longAgo},
    {"Thumbnails", CacheKind::harmless, CacheNature::pictures, 420, longAgo},
    {"pip", CacheKind::harmless, CacheNature::downloads, 380, longAgo},
    {"rclone", CacheKind::kept, CacheNature::unsent, 900, lately},
    {"mesa_shader_cache", CacheKind::kept, CacheNature::shaders, 400, lately},
}};

constexpr std::array<std::pair<const char*, std::uint64_t>, 3> thrownAway{
    {{"/home/demo/Videos/holiday-draft.mp4", 2700},
     {"/home/demo/Downloads/manual.pdf", 38},
     {"/home/demo/Projects/old-build", 362}}};

} // namespace

DemoDisposal::DemoDisposal() : m_available(171'000 * megabyte) {
    std::uint64_t number = 0;
    for (const auto& [origin, megabytes] : thrownAway) {
        m_trash.push_back({.trash = "/home/demo/.local/share/Trash",
                           .name = origin,
                           .identity = FileIdentity{1, ++number},
                           .origin = origin,
                           .bytes = megabytes * megabyte,
                           .trashed = lately});
    }
    for (const DemoCache& cache : caches) {
        const std::string folder = std::string("/home/demo/.cache/") + cache.name;
        m_caches.push_back({.name = cache.name,
                            .kind = cache.kind,
                            .nature = cache.nature,
                            .folder = folder,
                            .folders = {{folder, FileIdentity{1, ++number}}},
                            .bytes = cache.megabytes * megabyte,
                            .newest = cache.used,
                            .oldest = longAgo});
    }
}

TrashContents DemoDisposal::trashItems(const KeepGoing& /*keepGoing*/) {
    const std::lock_guard lock(m_mutex);
    return {m_trash, {}};
}

Removal DemoDisposal::remove(const TrashItem& item, const KeepGoing& keepGoing) {
    const std::lock_guard lock(m_mutex);
    const auto gone =
        std::erase_if(m_trash, [&](const TrashItem& each) { return keepGoing() && each.name == item.name; });
    const std::uint64_t bytes = gone > 0 ? item.bytes : 0;
    m_available += bytes;
    return {bytes, gone, {}};
}

ReleasableParts DemoDisposal::releasableParts(const KeepGoing& /*keepGoing*/) {
    const std::lock_guard lock(m_mutex);
    ReleasableParts parts{.caches = m_caches};
    for (const TrashItem& item : m_trash) {
        parts.trash += item.bytes;
    }
    return parts;
}

std::vector<std::string> DemoDisposal::cacheNames() {
    std::vector<std::string> names;
    names.reserve(std::size(caches));
    for (const DemoCache& cache : caches) {
        names.emplace_back(cache.name);
    }
    return names;
}

Removal DemoDisposal::remove(const CacheItem& item, const KeepGoing& keepGoing) {
    const std::lock_guard lock(m_mutex);
    const auto gone =
        std::erase_if(m_caches, [&](const CacheItem& each) { return keepGoing() && each.name == item.name; });
    const std::uint64_t bytes = gone > 0 ? item.bytes : 0;
    m_available += bytes;
    return {bytes, gone, {}};
}

std::vector<SystemCache> DemoDisposal::systemCaches() {
    return {{SystemCache::What::packages, "/var/cache/apt/archives", 2400 * megabyte, "sudo apt-get clean"},
            {SystemCache::What::journal, "/var/log/journal", 500 * megabyte,
             "sudo journalctl --vacuum-time=2weeks"}};
}

std::optional<VolumeSpace> DemoDisposal::volumeOf(const std::string& /*folder*/) {
    const std::lock_guard lock(m_mutex);
    return VolumeSpace{"demo", m_available};
}

} // namespace vantor::platform
