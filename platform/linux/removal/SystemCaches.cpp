// SPDX-License-Identifier: MIT
#include "platform/linux/removal/SystemCaches.hpp"

#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/FolderWalk.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace vantor::platform::linux {

namespace {

struct Place {
    SystemCache::What what;
    const char* folder;
    const char* command;
};

constexpr std::array<Place, 5> places{
    {{SystemCache::What::packages, "var/cache/apt/archives", "sudo apt-get clean"},
     {SystemCache::What::packages, "var/cache/dnf", "sudo dnf clean all"},
     {SystemCache::What::packages, "var/cache/pacman/pkg", "sudo pacman -Sc"},
     {SystemCache::What::packages, "var/cache/zypp/packages", "sudo zypper clean"},
     {SystemCache::What::journal, "var/log/journal", "sudo journalctl --vacuum-time=2weeks"}}};

} // namespace

std::vector<SystemCache> findSystemCaches(const KernelTree& tree) {
    std::vector<SystemCache> caches;
    for (const Place& place : places) {
        const std::string path = tree.path(place.folder);
        struct stat about {};
        if (::lstat(path.c_str(), &about) != 0 || !S_ISDIR(about.st_mode)) {
            continue;
        }
        SystemCache cache{place.what, path, std::nullopt, place.command};
        const posix::Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (folder.isOpen()) {
            FolderWalk walk(fileSystemOf(folder.number()).value_or(""), about.st_uid, [] { return true; });
            walk.add(path);
            cache.bytes = walk.isWhole() ? std::optional(walk.bytes()) : std::nullopt;
        }
        if (cache.bytes != 0U) {
            caches.push_back(std::move(cache));
        }
    }
    return caches;
}

} // namespace vantor::platform::linux
