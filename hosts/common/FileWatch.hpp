// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <set>
#include <string>

namespace vantor::hosts::common {

/// Notices when a file may have changed, also one that is replaced each time, is not there yet, or whose
/// folders are not: inotify(7) on its folder, or on the nearest one that exists, and on the folder that a
/// link leads to. Not for several threads at once.
class FileWatch {
public:
    explicit FileWatch(std::string path);

    /// Becomes readable when something happened; -1 where the kernel gives no watch.
    [[nodiscard]] int number() const { return m_queue.number(); }
    /// Why there is none, an errno value: ETIMEDOUT where the file system does not answer; 0 where there is
    /// one.
    [[nodiscard]] int error() const { return m_error; }
    /// Takes what happened off and watches the folders as they are now. Compare the file afterwards: others
    /// in the same folder wake this too.
    void settle();

private:
    void watch();
    bool watchNearest(const std::string& file, std::set<int>& watches);

    std::string m_path;
    platform::posix::Descriptor m_queue;
    std::set<int> m_watches;
    int m_error = 0;
};

} // namespace vantor::hosts::common
