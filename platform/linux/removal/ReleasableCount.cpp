// SPDX-License-Identifier: MIT
#include "platform/linux/removal/ReleasableCount.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/VolumeQuery.hpp"
#include "platform/linux/removal/CacheList.hpp"
#include "platform/linux/removal/TrashFolders.hpp"
#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestPath = 4096;

/// The folder at the top of the file system that holds a path: there, other disks keep their trash.
std::string topFolder(std::string path, dev_t fileSystem) {
    while (path.size() > 1) {
        const std::string above = path.substr(0, std::max<std::size_t>(path.find_last_of('/'), 1));
        struct stat about {};
        if (::stat(above.c_str(), &about) != 0 || about.st_dev != fileSystem) {
            break;
        }
        path = above;
    }
    return path;
}

} // namespace

ReleasableParts countReleasable(const ReleasablePlaces& places, LocalPaths& paths,
                                const std::function<bool()>& keepGoing) {
    ReleasableParts parts;
    if (places.documents.empty()) { // a machine without a home
        return parts;
    }
    if (!paths.isLocal(places.documents)) {
        parts.problem = printableText(places.documents, longestPath) +
                        ": is on a network's or a program's file system, which is left alone";
        return parts;
    }
    const posix::Descriptor descriptor(::open(places.documents.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::optional<std::string> fileSystem = fileSystemOf(descriptor.number());
    struct stat about {};
    if (!fileSystem || ::fstat(descriptor.number(), &about) != 0) {
        return parts;
    }
    FolderWalk walk(*fileSystem, ::geteuid(), [&] { return parts.isWhole = parts.isWhole && keepGoing(); });
    parts.caches = CacheList(places.tree, places.folders, paths).take(walk);
    const std::uint64_t before = walk.bytes();
    const auto ifLocal = [&paths](const std::string& path) {
        return paths.isLocal(path) ? path : std::string();
    };
    const TrashPlaces trashes{ifLocal(places.folders.data),
                              ifLocal(places.folders.home),
                              {topFolder(places.documents, about.st_dev)}};
    for (const std::string& trash : trashFolders(trashes, ::geteuid())) {
        for (const char* const part : {"/files", "/info", "/expunged"}) {
            walk.add(trash + part);
        }
    }
    parts.trash = walk.bytes() - before;
    return parts;
}

std::string keptReleasableFile(const posix::UserFolders& folders) {
    return folders.cache + "/vantor/releasable";
}

ReleasableCount countAndKeep(const ReleasablePlaces& places, LocalPaths& paths,
                             const std::function<bool()>& keepGoing) {
    if (!paths.isLocal(places.documents)) {
        return {countReleasable(places, paths, keepGoing), std::nullopt};
    }
    const std::optional<VolumeFigures> before = queryVolume(places.documents).figures;
    ReleasableCount count{countReleasable(places, paths, keepGoing), std::nullopt};
    const std::optional<VolumeFigures> after = queryVolume(places.documents).figures;
    if (!count.parts.isWhole || !before || !after) {
        return count;
    }
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    using std::chrono::system_clock;
    const auto now = std::chrono::duration_cast<std::chrono::seconds>(system_clock::now().time_since_epoch());
    // Of the two, the one that shows less: what was deleted or written meanwhile may have been counted or
    // not.
    count.kept = {after->identity,
                  {static_cast<std::int64_t>(std::min(count.parts.bytes(), most)),
                   std::min(before->available, after->available)},
                  now.count()};
    const std::string file = keptReleasableFile(places.folders);
    if (!places.folders.cache.empty() && paths.isLocal(file)) {
        saveKeptReleasable(file, *count.kept);
    }
    return count;
}

} // namespace vantor::platform::linux
