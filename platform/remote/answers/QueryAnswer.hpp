// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::remote {

/// A series of an answer: its labels, with the metric's name as "__name__", and its samples.
struct AnswerSeries {
    struct Label {
        std::string name;
        std::string value; ///< any text, not yet printable
    };
    struct Point {
        double seconds = 0; ///< since 1970: of the sample for a range, of the question for anything else
        double value = 0;   ///< may be not a number or infinite
    };
    std::vector<Label> labels;
    std::vector<Point> points;

    /// The value of a label; empty where there is none, which Prometheus holds for the same.
    [[nodiscard]] std::string_view label(std::string_view name) const;
};

/// What became of a question.
struct QueryAnswer {
    bool isWhole = false;     ///< it was understood and answered, and the text ends where it should
    bool hasWarnings = false; ///< something is missing, such as a store that is down
    std::size_t series = 0;   ///< that were taken
    std::string
        problem; ///< why it is not whole, printable: the server's own words or what is wrong with them
};

/// Reads an answer of Prometheus's HTTP API ("query", "query_range"; prometheus.io, "HTTP API") and hands out
/// its series one after the other: of an instant vector, a range vector or a scalar. Keys may come in any
/// order; what is not known is passed over. Samples whose value is no number are left out. An answer that is
/// nested deeper than 16, or holds a series with more than 128 labels, a label of more than 4 KiB or more
/// than 11,000 samples, ends there. The series and what it holds are good until `take` returns. Pure.
[[nodiscard]] QueryAnswer readQueryAnswer(std::string_view json,
                                          const std::function<void(const AnswerSeries&)>& take);

} // namespace vantor::platform::remote
