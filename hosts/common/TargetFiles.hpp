// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FileWatch.hpp"
#include "platform/remote/sources/WatchedNode.hpp"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vantor::hosts::common {

/// Lists of targets in files (TargetList.hpp), watched: a file that is replaced or changed is taken up, one
/// that cannot be read or is broken keeps what it held before. Main thread.
class TargetFiles {
public:
    /// Paths of JSON files; the last part may hold `*`, which stands for anything: all such files.
    explicit TargetFiles(const std::vector<std::string>& patterns);

    /// Whether something happened to a file, or may have where the kernel gives no watch.
    [[nodiscard]] bool mayHaveChanged();
    /// Reads them all.
    void read();

    /// Of all files, one after the other.
    [[nodiscard]] std::vector<platform::remote::NodeTarget> targets() const;
    /// What is wrong, in English and printable, naming the file; empty where nothing is.
    [[nodiscard]] const std::string& problem() const { return m_problem; }
    /// Whether any list was ever read.
    [[nodiscard]] bool isKnown() const { return !m_lists.empty(); }

private:
    struct Pattern {
        std::string path;
        FileWatch watch;
    };

    void readFile(const std::string& path);
    void complain(const std::string& path, const std::string& what);

    std::vector<Pattern> m_patterns;
    std::map<std::string, std::vector<platform::remote::NodeTarget>> m_lists; ///< by path
    std::string m_problem;
    int m_unwatched = 0; ///< questions since a file without a watch was read
};

} // namespace vantor::hosts::common
