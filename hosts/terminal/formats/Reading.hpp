// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "platform/machine/Source.hpp"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::terminal {

/// What the widget showed at one moment, as values: the source of every format.
struct Reading {
    struct Label {
        std::string_view outlet;
        std::string text;
    };
    struct Chart {
        std::string_view name; ///< "ram", "storage" or "cpu"
        double progress = 0;   ///< the fraction shown; may be not-a-number
        std::string title;
        platform::UIColor color = platform::UIColor::systemGreenColor();
    };

    std::chrono::system_clock::time_point time;
    ReportRecords records;
    std::vector<Label> labels; ///< captions and figures, in the order of the outlets
    std::vector<Chart> charts; ///< in the order of the sections
    bool showsReleasable = false;
    std::vector<platform::SourceFailure> failures;

    /// The text of a label; empty where there is none.
    [[nodiscard]] std::string_view label(std::string_view outlet) const;
    [[nodiscard]] const Chart* chart(std::string_view name) const;
    [[nodiscard]] bool hasFailed(platform::Source source) const;
};

/// Takes a reading from the view tree and the records. Main thread.
[[nodiscard]] Reading readingOf(const TEReportTableViewController& controller,
                                std::vector<platform::SourceFailure> failures,
                                std::chrono::system_clock::time_point time);

/// A moment in universal time after RFC 3339, in milliseconds: "2024-05-01T14:03:07.250Z".
[[nodiscard]] std::string timeText(std::chrono::system_clock::time_point time);

/// The band of a fraction: "green", "yellow", "orange" or "red"; empty for not-a-number and for what is no
/// level at all.
[[nodiscard]] std::string_view levelName(double progress);

/// A fraction in whole percent as the ring shows it, within 0...100; absent for not-a-number.
[[nodiscard]] std::optional<int> wholePercent(double progress);

/// One section, for readings of a single one.
enum class Field : std::uint8_t { ram, storage, cpu, network };

/// The name of a field's chart; empty for the network, which has none.
[[nodiscard]] std::string_view chartName(Field field);

} // namespace vantor::hosts::terminal
