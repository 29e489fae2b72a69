// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/machine/Disposal.hpp"
#include "platform/posix/UserFolders.hpp"

#include <string>
#include <utility>

namespace vantor::platform::linux {

/// What a LinuxDisposal is made of. The default is this machine's user.
struct DisposalOptions {
    KernelTree tree{"/"}; ///< for proc/self/mountinfo, which says where volumes are
    std::string dataHome = posix::UserFolders::fromEnvironment().data;
};

/// The user's trashes after freedesktop.org's Trash specification: $XDG_DATA_HOME/Trash, and those on the
/// volumes of this machine's own. The one in the home may be on a network's or a user's file system: a child
/// process looks first whether that answers, and one that does not within a second is a problem of the
/// contents. Any thread.
class LinuxDisposal final : public Disposal {
public:
    explicit LinuxDisposal(DisposalOptions options = {})
        : m_options(std::move(options)), m_paths(m_options.tree) {}

    TrashContents trashItems(const KeepGoing& keepGoing) override;
    Removal remove(const TrashItem& item, const KeepGoing& keepGoing) override;
    std::optional<VolumeSpace> volumeOf(const std::string& folder) override;

private:
    const DisposalOptions m_options;
    LocalPaths m_paths;
};

} // namespace vantor::platform::linux
