// SPDX-License-Identifier: MIT
#pragma once

#include "controller/Sections.hpp"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::terminal {

/// What the widget showed at one moment, as values: the source of every format. Of a section whose source has
/// failed there is no figure in it, whatever the widget still shows.
struct Reading {
    struct Row {
        const SectionRow* kind;
        std::string caption;
        std::string figure; ///< empty: there is none
        bool isShown;       ///< false: a preference hides it
    };
    struct Chart {
        double progress; ///< the fraction shown; not-a-number where there is none
        std::string title;
        platform::UIColor color;
    };
    struct Section {
        const vantor::Section* kind;
        bool hasFailed;
        std::string note; ///< beside its name, such as "of 16 GB"; empty: nothing
        std::vector<Row> rows;
        std::optional<Chart> chart; ///< absent where the section has no ring
    };

    /// Of another machine: how its figures came about.
    struct Remote {
        std::string heading; ///< its name and how old the figures are, or why there are none: for people
        bool isUp;
        std::chrono::system_clock::time_point sampled;
        std::chrono::duration<double> interval; ///< what shares and rates cover
        std::chrono::duration<double> age;
    };

    std::chrono::system_clock::time_point time;
    std::string host;             ///< the machine's name
    std::optional<Remote> remote; ///< absent for this machine
    std::string mountPoint;       ///< of the volume that is meant; empty where it is not known
    ReportRecords records;
    std::vector<Section> sections;
    std::vector<platform::SourceFailure> failures;

    /// The section of a source that has one.
    [[nodiscard]] const Section& section(platform::Source source) const;
    [[nodiscard]] bool hasFailed(platform::Source source) const;
};

/// Takes a reading from the view tree and the records, of a machine and a volume that are still to be named.
/// Main thread.
[[nodiscard]] Reading readingOf(const TEReportTableViewController& controller,
                                std::vector<platform::SourceFailure> failures,
                                std::chrono::system_clock::time_point time);

/// A moment in universal time after RFC 3339, in milliseconds: "2024-05-01T14:03:07.250Z".
[[nodiscard]] std::string timeText(std::chrono::system_clock::time_point time);

/// The same moment for people, where they are: "2024-05-01 14:03:07".
[[nodiscard]] std::string localTimeText(std::chrono::system_clock::time_point time);

/// The band of a fraction: "green", "yellow", "orange" or "red"; empty for not-a-number and for what is no
/// level at all.
[[nodiscard]] std::string_view levelName(double progress);

/// A fraction in whole percent as the ring shows it, within 0...100; absent for not-a-number.
[[nodiscard]] std::optional<int> wholePercent(double progress);

} // namespace vantor::hosts::terminal
