// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/VolumeQuery.hpp"

#include <chrono>
#include <memory>
#include <string>

namespace vantor::platform::linux {

/// Asks for a volume on a thread of its own, so that a mount that never answers costs its asker a second and
/// not the widget. At most one query is under way: while it hangs, further ones fail at once. The end of this
/// object does not wait for it; the thread then holds nothing but its own answer. Not for several threads at
/// once.
class VolumeWaiter {
public:
    static constexpr std::chrono::seconds limit{1};

    struct Result {
        VolumeAnswer answer;
        bool local = false; ///< isOnLocalFileSystem; false where the query failed
    };
    [[nodiscard]] Result ask(const std::string& path);

private:
    struct Query;
    std::shared_ptr<Query> m_hanging;
};

} // namespace vantor::platform::linux
