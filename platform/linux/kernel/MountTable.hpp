// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// What is mounted where, as /proc/self/mountinfo tells it (proc_pid_mountinfo(5)). Nothing of it asks a file
/// system, so that one which never answers is known before anybody waits for it.
class MountTable {
public:
    /// Lines that cannot be read are passed over. An empty table knows no file system at all; a root that is
    /// not among the mounts, as after chroot(2), counts as local: this program runs from it.
    explicit MountTable(std::string_view text = {});

    /// Whether everything on the way to an absolute path, its symbolic links followed, and the file or folder
    /// itself is on file systems of this machine that answer by themselves: neither a network's, nor a
    /// program's (FUSE), nor one that is mounted when somebody comes by. What is missing there counts as
    /// being there. The links are read, but only on file systems that passed already.
    [[nodiscard]] bool isLocal(std::string_view path) const;

    /// Where the file system that holds an absolute path is mounted; empty where that is not known. Links
    /// within the path are not followed.
    [[nodiscard]] std::string pointOf(std::string_view path) const;

private:
    struct Mount {
        std::uint64_t number = 0;
        std::uint64_t parent = 0;
        std::string point;
        bool local = false;
    };
    void addHiddenRoot();
    [[nodiscard]] const Mount* root() const;
    [[nodiscard]] const Mount* topAt(const Mount* below, std::string_view point) const;
    [[nodiscard]] const Mount* holding(std::string_view resolved) const;

    std::vector<Mount> m_mounts;
};

} // namespace vantor::platform::linux
