// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantor::platform::linux::sysctl {

/// Small files below a root folder: "/" on the running machine, a folder of captured files in tests.
class KernelTree {
public:
    explicit KernelTree(std::filesystem::path root) : m_root(std::move(root)) {}

    struct Content {
        int error = 0; ///< an errno value; 0: `text` is the file
        std::string text;
    };
    /// The file at a path such as "proc/meminfo", up to 1 MiB. Never waits: pipes read as empty.
    [[nodiscard]] Content read(std::string_view path) const;

    /// The same without the line feed or NUL at its end (device trees end their texts in one); absent where
    /// the file cannot be read.
    [[nodiscard]] std::optional<std::string> line(std::string_view path) const;

private:
    std::filesystem::path m_root;
};

} // namespace vantor::platform::linux::sysctl
