// SPDX-License-Identifier: MIT
#include "platform/remote/sources/MachineMoments.hpp"

#include "platform/remote/readings/ReadingFrom.hpp"

#include <algorithm>
#include <chrono>

namespace vantor::platform::remote {

namespace {

using Point = AnswerSeries::Point;

bool isUp(const AnswerSeries& series) {
    return series.label("__name__") == "up";
}

/// The newest time that is older than another; absent where there is none.
std::optional<double> newestBefore(const std::vector<AnswerSeries>& all, double end) {
    std::optional<double> newest;
    for (const AnswerSeries& series : all) {
        const auto later = std::ranges::lower_bound(series.points, end, {}, &Point::seconds);
        if (!isUp(series) && later != series.points.begin()) {
            newest = std::max(newest.value_or((later - 1)->seconds), (later - 1)->seconds);
        }
    }
    return newest;
}

Reading readingAt(const std::vector<AnswerSeries>& all, double seconds, std::chrono::nanoseconds taken) {
    ReadingBuilder builder;
    Sample sample;
    for (const AnswerSeries& series : all) {
        const auto point = std::ranges::lower_bound(series.points, seconds, {}, &Point::seconds);
        if (isUp(series) || point == series.points.end() || point->seconds != seconds) {
            continue;
        }
        sample.name = series.label("__name__");
        sample.labels.clear();
        for (const AnswerSeries::Label& label : series.labels) {
            sample.labels.push_back({label.name, label.value});
        }
        sample.value = point->value;
        builder.add(sample);
    }
    return builder.finish(taken);
}

/// The first of the attempts in vain that the last one ends; absent where that was none.
std::optional<double> downSince(const AnswerSeries& up) {
    std::optional<double> since;
    for (const Point& point : up.points) {
        since = point.value > 0 ? std::nullopt : std::optional(since.value_or(point.seconds));
    }
    return since;
}

/// Since when the exporter's own job asks in vain: other jobs may measure something else at the same address.
/// Where no reading is left that tells which job that is, one in vain is meant.
std::optional<double> downSince(const std::vector<AnswerSeries>& all) {
    const auto told = std::ranges::find_if_not(all, isUp);
    for (const AnswerSeries& series : all) {
        if (isUp(series) && (told == all.end() || series.label("job") == told->label("job"))) {
            if (const std::optional<double> since = downSince(series)) {
                return since;
            }
        }
    }
    return std::nullopt;
}

} // namespace

MachineMoments machineMoments(const std::vector<AnswerSeries>& series) {
    MachineMoments moments;
    moments.downSince = downSince(series);
    constexpr double end = 1e300;
    const std::optional<double> after = newestBefore(series, end);
    const std::optional<double> before = after ? newestBefore(series, *after) : std::nullopt;
    if (after) {
        moments.afterSeconds = *after;
        moments.after = readingAt(series, *after, std::chrono::nanoseconds(0));
    }
    if (before) {
        moments.beforeSeconds = *before;
        const std::chrono::duration<double> apart(*before - *after);
        moments.before =
            readingAt(series, *before, std::chrono::duration_cast<std::chrono::nanoseconds>(apart));
    }
    return moments;
}

} // namespace vantor::platform::remote
