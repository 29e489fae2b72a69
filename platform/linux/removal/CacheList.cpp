// SPDX-License-Identifier: MIT
#include "platform/linux/removal/CacheList.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/removal/PathPattern.hpp"
#include "platform/linux/removal/Remover.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestName = 255;

std::int64_t wallClock() {
    return std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// Whether a folder's owner says that it can be made again (bford.info/cachedir).
bool isMarkedAsCache(int folder, const char* name) {
    constexpr std::string_view signature = "Signature: 8a477f597d28d172789f06886806bc55";
    const posix::Descriptor inner = openBelow(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    const posix::Descriptor tag =
        openBelow(inner.number(), "CACHEDIR.TAG", O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    std::array<char, signature.size()> text{};
    return tag.isOpen() && ::pread(tag.number(), text.data(), text.size(), 0) == signature.size() &&
           std::string_view(text.data(), text.size()) == signature;
}

void noteUse(CacheItem& item, const std::optional<FolderWalk::Use>& use) {
    if (use) {
        item.newest = use->newest;
        item.oldest = use->oldest;
    }
}

} // namespace

/// Never the home itself, nor a folder that holds it, whatever the environment says: what stands there by a
/// known name is the user's own.
bool CacheList::mayHold(const std::string& base) const {
    struct stat folder {};
    if (base.empty() || !m_paths.isLocal(base) || ::lstat(base.c_str(), &folder) != 0) {
        return false;
    }
    for (std::string above = m_folders.home; !above.empty();) {
        struct stat about {};
        if (::stat(above.c_str(), &about) == 0 && identityOf(about) == identityOf(folder)) {
            return false;
        }
        above.resize(above == "/" ? 0 : std::max<std::size_t>(above.find_last_of('/'), 1));
    }
    return true;
}

void CacheList::find(const KnownCache& cache, const FoundFolder& found) {
    for (std::string_view place : cache.places) {
        const bool isInHome = place.starts_with("~/");
        const std::string base = baseOf(place, m_folders.home, m_folders.cache);
        if (isInHome ? !m_paths.isLocal(base) : !mayHold(base)) {
            continue;
        }
        findPaths(base, place,
                  [&](int folder, const char* name, const std::string& path, const struct stat& about) {
                      if (S_ISDIR(about.st_mode)) {
                          found(folder, name, {path, identityOf(about)});
                      }
                  });
    }
}

CacheItem CacheList::sized(const KnownCache& cache, FolderWalk& walk) {
    CacheItem item{.name = std::string(cache.name), .kind = cache.kind, .nature = cache.nature};
    const std::uint64_t before = walk.bytes();
    find(cache, [&](int folder, const char* name, const CacheFolder& place) {
        walk.addEntry(folder, name);
        item.isMarked = item.isMarked || isMarkedAsCache(folder, name);
        item.folders.push_back(place);
    });
    item.bytes = walk.bytes() - before;
    noteUse(item, walk.takeUse());
    if (!item.folders.empty()) {
        item.folder = item.folders.front().path;
        item.usedBy = m_users.userOf(cache);
    }
    return item;
}

void CacheList::takeOthers(std::vector<CacheItem>& items, FolderWalk& walk) const {
    const std::string& cache = m_folders.cache;
    CacheItem loose{.folder = cache};
    Folder entries(mayHold(cache) ? Remover::openOwn(AT_FDCWD, cache.c_str()) : posix::Descriptor());
    while (const char* const name = entries.next()) {
        if (std::string_view(name) == "vantor") {
            continue; // what is kept there is this program's own
        }
        const std::uint64_t before = walk.bytes();
        walk.addEntry(entries.number(), name);
        const std::uint64_t bytes = walk.bytes() - before;
        const std::optional<FolderWalk::Use> use = walk.takeUse();
        if (entries.mayBeFolder() && use) {
            CacheItem item{.name = printableText(name, longestName),
                           .nature = keptNature(name),
                           .folder = cache + '/' + name,
                           .bytes = bytes};
            item.isMarked = isMarkedAsCache(entries.number(), name);
            noteUse(item, use);
            items.push_back(std::move(item));
        } else {
            loose.bytes += bytes;
        }
    }
    if (loose.bytes > 0) {
        items.push_back(std::move(loose));
    }
}

std::vector<CacheItem> CacheList::take(FolderWalk& walk) {
    const std::int64_t now = wallClock();
    std::vector<CacheItem> items;
    for (const KnownCache& cache : knownCaches()) {
        CacheItem item = sized(cache, walk);
        if (!item.folders.empty()) {
            items.push_back(std::move(item));
        }
    }
    for (const CacheItem& item : items) {
        for (const CacheFolder& folder : item.folders) {
            walk.leaveOut(folder.identity.device, folder.identity.number);
        }
    }
    takeOthers(items, walk);
    for (CacheItem& item : items) {
        item.listed = now;
    }
    return items;
}

Removal CacheList::remove(const CacheItem& item, const Disposal::KeepGoing& keepGoing) {
    const auto known = std::ranges::find(knownCaches(), item.name, &KnownCache::name);
    if (known == knownCaches().end() || known->kind == CacheKind::kept) {
        return {.problem = item.name + ": is no cache that is known to come back"};
    }
    if (const std::string user = m_users.userOf(*known); !user.empty()) {
        return {.problem = item.name + ": " + user + " is running"};
    }
    Remover remover(keepGoing, item.listed);
    find(*known, [&](int folder, const char* name, const CacheFolder& place) {
        const auto listed = std::ranges::find(item.folders, place.path, &CacheFolder::path);
        if (listed != item.folders.end()) { // what came later stays
            remover.remove(folder, name, listed->identity);
        }
    });
    return remover.outcome();
}

} // namespace vantor::platform::linux
