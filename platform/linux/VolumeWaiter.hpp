// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/VolumeQuery.hpp"
#include "platform/posix/BoundedChild.hpp"

#include <chrono>
#include <string>

namespace vantor::platform::linux {

/// Asks for a volume in a child process, so that a mount that never answers costs its asker a second and not
/// the widget, nor its end. At most one query is under way: while it hangs, further ones fail at once. Not
/// for several threads at once.
class VolumeWaiter {
public:
    static constexpr std::chrono::seconds limit{1};

    [[nodiscard]] VolumeAnswer ask(const std::string& path);

private:
    posix::BoundedChild m_child;
};

} // namespace vantor::platform::linux
