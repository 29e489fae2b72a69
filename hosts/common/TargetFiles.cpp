// SPDX-License-Identifier: MIT
#include "hosts/common/TargetFiles.hpp"

#include "hosts/common/HostMachine.hpp"
#include "hosts/common/TargetList.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/posix/RegularFile.hpp"

#include <fnmatch.h>
#include <poll.h>

#include <filesystem>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

namespace vantor::hosts::common {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t largest = std::size_t{8} << 20; // bytes of a list
constexpr std::size_t mostFiles = 1000;

bool isPattern(const std::string& path) {
    return fs::path(path).filename().string().find('*') != std::string::npos;
}

/// The files that a pattern stands for now, a line each; a path without `*` is itself.
std::set<std::string> filesOf(const std::string& pattern) {
    if (!isPattern(pattern)) {
        return {pattern};
    }
    const fs::path folder = fs::path(pattern).parent_path();
    const std::string name = fs::path(pattern).filename();
    const std::optional<std::string> lines = askAbout(folder, [&] {
        std::string found;
        std::error_code error;
        for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
             entry.increment(error)) {
            const std::string file = entry->path();
            if (::fnmatch(name.c_str(), entry->path().filename().c_str(), FNM_PERIOD) == 0 &&
                file.find('\n') == std::string::npos) {
                found += file + '\n';
            }
        }
        return found;
    });
    std::set<std::string> files;
    std::istringstream text(lines.value_or(""));
    for (std::string line; files.size() < mostFiles && std::getline(text, line);) {
        files.insert(line);
    }
    return files;
}

} // namespace

TargetFiles::TargetFiles(const std::vector<std::string>& patterns) {
    for (const std::string& path : patterns) {
        m_patterns.push_back({path, FileWatch(path)});
    }
}

bool TargetFiles::mayHaveChanged() {
    constexpr int seldom = 15;
    bool mayHave = false;
    bool isUnwatched = false;
    for (Pattern& pattern : m_patterns) {
        pollfd waiting{pattern.watch.number(), POLLIN, 0};
        isUnwatched = isUnwatched || waiting.fd < 0;
        if (waiting.fd >= 0 && ::poll(&waiting, 1, 0) > 0) {
            pattern.watch.settle();
            mayHave = true;
        }
    }
    if (isUnwatched && ++m_unwatched >= seldom) {
        m_unwatched = 0;
        mayHave = true;
    }
    return mayHave;
}

void TargetFiles::read() {
    m_problem.clear();
    std::set<std::string> files;
    for (const Pattern& pattern : m_patterns) {
        files.merge(filesOf(pattern.path));
    }
    std::erase_if(m_lists, [&files](const auto& list) { return !files.contains(list.first); });
    for (const std::string& file : files) {
        readFile(file);
    }
    if (files.empty() && !m_patterns.empty()) {
        complain(m_patterns.front().path, "there is no such file");
    }
}

void TargetFiles::readFile(const std::string& path) {
    const std::optional<std::string> text =
        askAbout(path, [&path] { return platform::posix::readRegularFile(path, largest + 1); });
    if (!text || text->empty() || text->size() > largest) {
        complain(path, !text || text->empty() ? "cannot be read, or holds nothing" : "is larger than 8 MiB");
        return;
    }
    std::string problem;
    std::string doubt;
    std::optional<std::vector<platform::remote::NodeTarget>> targets = targetsFrom(*text, problem, doubt);
    if (targets) {
        m_lists[path] = *std::move(targets);
    } else {
        complain(path, problem);
    }
    if (!doubt.empty()) {
        complain(path, doubt);
    }
}

/// One thing at a time: the next is told when this is mended.
void TargetFiles::complain(const std::string& path, const std::string& what) {
    if (m_problem.empty()) {
        m_problem = platform::printableText(path, 512) + ": " + what;
    }
}

std::vector<platform::remote::NodeTarget> TargetFiles::targets() const {
    std::vector<platform::remote::NodeTarget> all;
    for (const auto& [path, targets] : m_lists) {
        all.insert(all.end(), targets.begin(), targets.end());
    }
    return all;
}

} // namespace vantor::hosts::common
