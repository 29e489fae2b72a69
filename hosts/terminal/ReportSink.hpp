// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// Where reports go: standard output, or a file that each of them replaces as a whole. Main thread.
class ReportSink {
public:
    /// `file` is empty for standard output.
    explicit ReportSink(std::string file) : m_file(std::move(file)) {}

    /// Writes a report. On standard output a page is set apart from the one before by an empty line. What
    /// goes wrong is said on standard error, for a file each reason once.
    void write(std::string text, bool isPage);

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; } ///< with the last report
    /// Nobody reads any more, or nothing can be written to standard output. A disk that is full may have room
    /// again at the next report.
    [[nodiscard]] bool isClosed() const { return m_isClosed; }

private:
    void replaceFile(std::string_view text);

    std::string m_file;
    std::optional<std::string> m_problem; ///< with the file, when it was last written
    bool m_hasWritten = false;
    bool m_hasFailed = false;
    bool m_isClosed = false;
};

} // namespace vantor::hosts::terminal
