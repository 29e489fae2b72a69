// SPDX-License-Identifier: MIT
#include "hosts/terminal/ReportSink.hpp"

#include "hosts/common/StandardStreams.hpp"
#include "hosts/terminal/StandardOutput.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace vantor::hosts::terminal {

void ReportSink::write(std::string text, bool isPage) {
    if (!m_file.empty()) {
        replaceFile(text);
        return;
    }
    if (std::exchange(m_hasWritten, true) && isPage) {
        text.insert(0, 1, '\n');
    }
    const Output output = writeOut(text);
    m_hasFailed = output == Output::failed;
    m_isClosed = output != Output::written;
}

void ReportSink::replaceFile(std::string_view text) {
    constexpr mode_t everybodyReads = 0644; // the collector is another user
    const std::string path = std::filesystem::absolute(m_file).string();
    const std::optional<std::string> problem = platform::posix::replaceFile(path, text, everybodyReads);
    if (problem && problem != m_problem) {
        common::writeUnhurried(STDERR_FILENO,
                               "vantor-term: --output: " + platform::printableText(*problem, 4096) + '\n');
    }
    m_problem = problem;
    m_hasFailed = problem.has_value();
}

} // namespace vantor::hosts::terminal
