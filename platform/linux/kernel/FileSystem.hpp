// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Types of file systems, as statfs(2) gives them, that linux/magic.h does not have.
inline constexpr std::uint32_t xfsMagic = 0x58465342, bcachefsMagic = 0xCA451A4E;

/// Which file system an open file or folder is on, as bytes that are equal for the same one. The device
/// number tells that everywhere but on btrfs, where each subvolume has its own: there it is the file system's
/// own identity. Absent where the system does not say.
[[nodiscard]] std::optional<std::string> fileSystemOf(int descriptor);

/// Whether files there may have blocks in common, so that deleting one gives nothing back: copies that share
/// their content (reflinks), and on btrfs snapshots.
[[nodiscard]] bool mayShareBlocks(int descriptor);

/// The bytes of an open file's blocks that no other file or snapshot holds (FS_IOC_FIEMAP, Documentation/
/// filesystems/fiemap.rst). Absent where the file system cannot tell.
[[nodiscard]] std::optional<std::uint64_t> unsharedBytes(int descriptor);

} // namespace vantor::platform::linux
