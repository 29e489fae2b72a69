// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Disposal.hpp"
#include "platform/posix/Descriptor.hpp"

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <set>
#include <string>

namespace vantor::platform::linux {

/// Deletes a file, or a folder with everything below it, and nothing else, whatever another program does to
/// the names meanwhile: everything goes by descriptors, no symbolic link is followed (openat2(2) refuses;
/// kernels before 5.6 are asked one name at a time), a folder is entered only if it is the one that was
/// looked at, and what is mounted below stays. So do folders of other users, and what is more than 64 folders
/// deep. Not for several threads at once.
class Remover {
public:
    /// With `listed`, in nanoseconds since 1970, files stay that were written or changed later.
    explicit Remover(Disposal::KeepGoing keepGoing, std::optional<std::int64_t> listed = std::nullopt)
        : m_keepGoing(std::move(keepGoing)), m_listed(listed) {}

    /// Opens a folder that is to be no link and this user's own; one that is not is not open.
    static posix::Descriptor openOwn(int folder, const char* name);

    /// Deletes a name in an open folder if it stands for that file or folder. True when it is gone.
    bool remove(int folder, const std::string& name, const FileIdentity& identity);

    /// What was deleted, and the first reason why something stayed.
    [[nodiscard]] const Removal& outcome() const { return m_outcome; }

private:
    bool removeEntry(int folder, const char* name, const struct stat& about, int depth);
    bool removeFolder(int folder, const char* name, const struct stat& about, int depth);
    bool removeEntriesOf(int folder, int depth);
    bool stays(const char* name, const std::string& reason);
    [[nodiscard]] bool isNewer(const struct stat& about) const;

    Disposal::KeepGoing m_keepGoing;
    std::optional<std::int64_t> m_listed;
    std::set<FileIdentity> m_touched; ///< files that lost a name here, which counts as a change
    Removal m_outcome;
    bool m_isStopped = false;
};

/// Opens a folder directly below another one; never through a link, a mount or "..". `flags` are open(2)'s.
[[nodiscard]] posix::Descriptor openBelow(int folder, const char* name, int flags);

/// Which file a stat(2) is of.
[[nodiscard]] FileIdentity identityOf(const struct stat& about);

} // namespace vantor::platform::linux
