// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/FileSystem.hpp"

#include <linux/btrfs.h>
#include <linux/fiemap.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <array>
#include <cstddef>
#include <limits>

namespace vantor::platform::linux {

namespace {

std::uint32_t typeOf(int descriptor) {
    struct statfs about {};
    return ::fstatfs(descriptor, &about) == 0 ? static_cast<std::uint32_t>(about.f_type) : 0;
}

template<class T>
std::string bytesOf(const T& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

} // namespace

std::optional<std::string> fileSystemOf(int descriptor) {
    if (typeOf(descriptor) == BTRFS_SUPER_MAGIC) {
        btrfs_ioctl_fs_info_args about{};
        if (::ioctl(descriptor, BTRFS_IOC_FS_INFO, &about) == 0) {
            return bytesOf(about.fsid);
        }
    }
    struct stat about {};
    return ::fstat(descriptor, &about) == 0 ? std::optional(bytesOf(about.st_dev)) : std::nullopt;
}

bool mayShareBlocks(int descriptor) {
    const std::uint32_t type = typeOf(descriptor);
    return type == BTRFS_SUPER_MAGIC || type == xfsMagic || type == bcachefsMagic;
}

std::optional<std::uint64_t> unsharedBytes(int descriptor) {
    constexpr std::uint32_t atOnce = 64;
    // The system's structure ends in an array of no length.
    alignas(fiemap) std::array<std::byte, sizeof(fiemap) + atOnce * sizeof(fiemap_extent)> place;
    std::uint64_t bytes = 0;
    std::uint64_t from = 0;
    for (bool last = false; !last;) {
        place.fill(std::byte{0});
        auto* const question = reinterpret_cast<fiemap*>(place.data());
        question->fm_start = from;
        question->fm_length = std::numeric_limits<std::uint64_t>::max() - from;
        question->fm_extent_count = atOnce;
        if (::ioctl(descriptor, FS_IOC_FIEMAP, question) != 0) {
            return std::nullopt;
        }
        const std::uint64_t began = from;
        for (std::uint32_t i = 0; i < question->fm_mapped_extents && i < atOnce; ++i) {
            const fiemap_extent& extent = question->fm_extents[i];
            bytes += (extent.fe_flags & FIEMAP_EXTENT_SHARED) == 0 ? extent.fe_length : 0;
            from = extent.fe_logical + extent.fe_length;
            last = last || (extent.fe_flags & FIEMAP_EXTENT_LAST) != 0;
        }
        last = last || from <= began;
    }
    return bytes;
}

} // namespace vantor::platform::linux
