// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/MountTable.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cstddef>
#include <optional>

namespace vantor::platform::linux {

namespace {

constexpr int mostLinks = 40; // as the kernel has it

/// Of a local disk or of memory. devtmpfs is among them for what is below it: /dev/shm.
constexpr std::array<std::string_view, 27> localTypes{
    "bcachefs", "btrfs",   "devtmpfs", "erofs", "exfat", "ext2",   "ext3",  "ext4",    "f2fs",
    "hfsplus",  "iso9660", "jffs2",    "jfs",   "minix", "nilfs2", "ntfs3", "overlay", "ramfs",
    "reiserfs", "rootfs",  "squashfs", "tmpfs", "ubifs", "udf",    "vfat",  "xfs",     "zfs"};

bool isLocalType(std::string_view type) {
    return std::ranges::find(localTypes, type) != localTypes.end();
}

/// Blanks, tabs, line feeds and backslashes of a path are written as three octal digits: "\040".
std::string unescaped(std::string_view text) {
    std::string path;
    while (!text.empty()) {
        unsigned code = 0;
        const char* const digits = text.data() + 1;
        const bool escaped = text.front() == '\\' && text.size() > 3 &&
                             std::from_chars(digits, digits + 3, code, 8).ptr == digits + 3;
        path += escaped ? static_cast<char>(code) : text.front();
        text.remove_prefix(escaped ? 4 : 1);
    }
    return path;
}

std::optional<std::string> linkAt(const std::string& path) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    return length > 0 ? std::optional<std::string>({target.data(), static_cast<std::size_t>(length)})
                      : std::nullopt;
}

} // namespace

MountTable::MountTable(std::string_view text) {
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view rest = line->text;
        const std::optional<std::uint64_t> number = takeNumber(rest);
        const std::optional<std::uint64_t> parent = takeNumber(rest);
        (void)takeWord(rest); // the device
        (void)takeWord(rest); // what of it is mounted
        const std::string_view point = takeWord(rest);
        const std::size_t optionsEnd = rest.find(" - ");
        if (!number || !parent || !point.starts_with('/') || optionsEnd == std::string_view::npos) {
            continue;
        }
        rest.remove_prefix(optionsEnd + 3);
        m_mounts.push_back({*number, *parent, unescaped(point), isLocalType(takeWord(rest))});
    }
    addHiddenRoot();
}

/// After chroot(2) into a folder that nothing is mounted on, only what is mounted below that folder is
/// listed: the mount that holds it is named as a parent alone.
void MountTable::addHiddenRoot() {
    const auto listed = [this](std::uint64_t number) {
        return std::ranges::find(m_mounts, number, &Mount::number) != m_mounts.end();
    };
    const auto first =
        std::ranges::find_if(m_mounts, [&](const Mount& each) { return !listed(each.parent); });
    if (first != m_mounts.end() && std::ranges::find(m_mounts, "/", &Mount::point) == m_mounts.end()) {
        m_mounts.push_back({first->parent, first->parent, "/", true});
    }
}

/// What is on top of the stack of mounts at a place; `below` itself where nothing is mounted on it there.
const MountTable::Mount* MountTable::topAt(const Mount* below, std::string_view point) const {
    const Mount* top = below;
    for (std::size_t steps = 0; steps < m_mounts.size();
         ++steps) { // a table of nonsense may go round in circles
        const auto next = std::ranges::find_if(m_mounts, [top, point](const Mount& mount) {
            return mount.parent == top->number && mount.number != top->number && mount.point == point;
        });
        if (next == m_mounts.end()) {
            break;
        }
        top = &*next;
    }
    return top;
}

const MountTable::Mount* MountTable::root() const {
    const auto isRoot = [](const Mount& mount) { return mount.point == "/"; };
    const auto first = std::ranges::find_if(m_mounts, [this, isRoot](const Mount& mount) {
        return isRoot(mount) && std::ranges::none_of(m_mounts, [&](const Mount& other) {
                   return isRoot(other) && other.number == mount.parent && &other != &mount;
               });
    });
    return first != m_mounts.end() ? topAt(&*first, "/") : nullptr;
}

/// The mount that holds a path without links; null where that is not known.
const MountTable::Mount* MountTable::holding(std::string_view resolved) const {
    const Mount* mount = root();
    for (std::size_t end = 1; mount != nullptr && end < resolved.size();) {
        end = std::min(resolved.find('/', end + 1), resolved.size());
        mount = topAt(mount, resolved.substr(0, end));
    }
    return mount;
}

std::string MountTable::pointOf(std::string_view path) const {
    const Mount* const mount = holding(path);
    return mount != nullptr ? mount->point : std::string();
}

bool MountTable::isLocal(std::string_view path) const {
    std::string rest(path);
    std::string at; // resolved: without links, "." and ".."; empty is the root
    const Mount* mount = root();
    int links = 0;
    while (mount != nullptr && mount->local) {
        std::string_view left = rest;
        const std::string name(takeUntil(left, '/'));
        rest = std::string(left);
        if (name == "..") {
            at.resize(at.empty() ? 0 : at.find_last_of('/'));
            mount = holding(at);
        } else if (!name.empty() && name != ".") {
            const std::string next = std::string(at).append(1, '/').append(name);
            const Mount* const here = topAt(mount, next);
            const std::optional<std::string> target = here == mount ? linkAt(next) : std::nullopt;
            if (target && ++links > mostLinks) {
                return true; // nobody gets any further
            }
            if (target && target->starts_with('/')) {
                at.clear();
                mount = root();
            } else if (!target) {
                at = next;
                mount = here;
            }
            if (target) {
                rest.insert(0, 1, '/').insert(0, *target);
            }
        }
        if (rest.empty()) {
            return mount != nullptr && mount->local;
        }
    }
    return false;
}

} // namespace vantor::platform::linux
