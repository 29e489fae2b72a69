// SPDX-License-Identifier: MIT
#include "platform/linux/removal/TrashFolders.hpp"

#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/removal/PathPattern.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace vantor::platform::linux {

namespace {

/// The kernel writes a blank as "\040".
std::string unescaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto isOctal = [&text](std::size_t at) { return text[at] >= '0' && text[at] <= '7'; };
        const bool isEscape = text.size() >= 4 && text.front() == '\\' && isOctal(1) && isOctal(2) &&
                              isOctal(3) && text[1] <= '3';
        result.push_back(isEscape
                             ? static_cast<char>((text[1] - '0') * 64 + (text[2] - '0') * 8 + (text[3] - '0'))
                             : text.front());
        text.remove_prefix(isEscape ? 4 : 1);
    }
    return result;
}

bool isLocalType(std::string_view type) {
    constexpr std::array<std::string_view, 19> types{
        "ext2", "ext3",  "ext4",  "xfs",   "btrfs", "bcachefs", "f2fs", "zfs",     "jfs",     "nilfs2",
        "vfat", "msdos", "exfat", "ntfs3", "ntfs",  "hfsplus",  "udf",  "overlay", "reiserfs"};
    return std::ranges::find(types, type) != types.end();
}

struct Looked {
    bool isFolder = false;
    struct stat about {};
};

Looked look(const std::string& path) {
    Looked looked;
    looked.isFolder = ::lstat(path.c_str(), &looked.about) == 0 && S_ISDIR(looked.about.st_mode);
    return looked;
}

} // namespace

std::vector<std::string> localMounts(std::string_view mountInfo) {
    std::vector<std::string> mounts;
    while (const std::optional<Line> line = takeLine(mountInfo)) {
        std::string_view rest = line->text;
        std::string_view point;
        for (int field = 1; field <= 5; ++field) {
            point = takeWord(rest);
        }
        while (!rest.empty() && takeWord(rest) != "-") { // optional fields end with a dash
        }
        if (isLocalType(takeWord(rest)) && point.starts_with('/')) {
            mounts.push_back(unescaped(point));
        }
    }
    return mounts;
}

std::vector<std::string> trashFolders(const TrashPlaces& places, uid_t user) {
    std::vector<std::string> candidates;
    if (!places.data.empty()) {
        candidates.push_back(places.data + "/Trash");
    }
    if (!places.home.empty()) {
        findPaths(places.home, "snap/*/*/.local/share/Trash",
                  [&candidates](int, const char*, const std::string& path, const struct stat&) {
                      candidates.push_back(path);
                  });
    }
    const std::string id = std::to_string(user);
    for (const std::string& mount : places.mounts) {
        std::string trash = mount == "/" ? std::string() : mount;
        trash += "/.Trash";
        const Looked shared = look(trash);
        if (shared.isFolder && (shared.about.st_mode & S_ISVTX) != 0) {
            candidates.emplace_back(trash).append("/").append(id);
        }
        candidates.emplace_back(trash).append("-").append(id);
    }
    std::vector<std::string> trashes;
    std::set<std::pair<dev_t, ino_t>> seen;
    for (const std::string& candidate : candidates) {
        const Looked looked = look(candidate);
        if (looked.isFolder && looked.about.st_uid == user &&
            seen.emplace(looked.about.st_dev, looked.about.st_ino).second) {
            trashes.push_back(candidate);
        }
    }
    return trashes;
}

} // namespace vantor::platform::linux
