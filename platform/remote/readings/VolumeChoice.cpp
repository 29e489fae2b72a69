// SPDX-License-Identifier: MIT
#include "platform/remote/readings/VolumeChoice.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace vantor::platform::remote {

namespace {

bool hasFigures(const NodeVolume& volume) {
    return !volume.hasFailed && volume.size && volume.available && usableSize(volume) > 0;
}

bool isBelow(std::string_view path, std::string_view folder) {
    return path == folder || (path.starts_with(folder) && path.substr(folder.size()).starts_with('/'));
}

bool isReal(const NodeVolume& volume) {
    constexpr std::array<std::string_view, 14> unreal{"tmpfs", "ramfs",   "squashfs", "overlay",  "iso9660",
                                                      "vfat",  "msdosfs", "cifs",     "smbfs",    "9p",
                                                      "devfs", "procfs",  "fdescfs",  "linprocfs"};
    constexpr std::array<std::string_view, 2> folders{"/boot", "/run"};
    const std::string_view type = volume.type;
    return hasFigures(volume) && !volume.isReadOnly && std::ranges::find(unreal, type) == unreal.end() &&
           !type.starts_with("fuse.") && !type.starts_with("nfs") &&
           std::ranges::none_of(folders,
                                [&volume](auto folder) { return isBelow(volume.mountPoint, folder); });
}

} // namespace

std::uint64_t usableSize(const NodeVolume& volume) {
    const std::uint64_t available = *volume.available;
    const std::uint64_t free = volume.free.value_or(available);
    const std::uint64_t reserved = free > available ? free - available : 0;
    return *volume.size > reserved ? *volume.size - reserved : 0;
}

double usedShare(const NodeVolume& volume) {
    const auto size = static_cast<double>(usableSize(volume));
    return std::max(0.0, size - static_cast<double>(*volume.available)) / size;
}

const NodeVolume* fullestVolume(const Reading& reading) {
    const NodeVolume* fullest = nullptr;
    const NodeVolume* root = nullptr;
    for (const NodeVolume& volume : reading.volumes) {
        // Of two that are as full, one device at two mount points, the shorter path is the better name.
        if (isReal(volume) && (fullest == nullptr || usedShare(volume) > usedShare(*fullest) ||
                               (usedShare(volume) == usedShare(*fullest) &&
                                volume.mountPoint.size() < fullest->mountPoint.size()))) {
            fullest = &volume;
        }
        if (volume.mountPoint == "/" && hasFigures(volume)) {
            root = &volume;
        }
    }
    return fullest != nullptr ? fullest : root;
}

} // namespace vantor::platform::remote
