// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// Where proc, sys, etc and usr lie: "/" on the running machine, a folder of captured files in tests. Paths
/// below are written without a slash in front: "proc/meminfo". Any thread.
class KernelTree {
public:
    explicit KernelTree(std::string root) : m_root(std::move(root)) {
        if (!m_root.ends_with('/')) {
            m_root += '/';
        }
    }

    /// The whole path of a file or folder below.
    [[nodiscard]] std::string path(std::string_view below) const { return m_root + std::string(below); }
    [[nodiscard]] bool exists(std::string_view below) const;
    /// The last part of what a symbolic link names, as sysfs tells a device's bus or driver; empty where
    /// there is no such link.
    [[nodiscard]] std::string linkedName(std::string_view below) const;

    struct Content {
        int error = 0; ///< an errno value; 0: `text` is the file
        std::string text;
    };
    /// A file that is read once; KernelFile is for those that are read again and again. Never waits for a
    /// pipe or a device.
    [[nodiscard]] Content read(std::string_view below) const;
    /// Its text without the line feed or NUL at its end (device trees end their texts in one); absent where
    /// it cannot be read.
    [[nodiscard]] std::optional<std::string> line(std::string_view below) const;

private:
    std::string m_root;
};

} // namespace vantor::platform::linux
