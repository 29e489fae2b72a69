// SPDX-License-Identifier: MIT
#include "fleet/FleetWords.hpp"

#include "charts/ArcChartStyle.hpp"
#include "platform/foundation/CountText.hpp"
#include "platform/foundation/DateText.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace vantor::fleet {

using platform::countText;
using platform::FleetFigure;
using platform::NSLocalizedString;
using platform::textWithValue;

namespace {

constexpr const char* between = " \u00B7 ";
constexpr const char* nothing = "\u2013";

std::string withNumber(std::string_view key, std::uint64_t number) {
    return textWithValue(NSLocalizedString(key), "n", countText(number));
}

void add(std::string& line, const std::string& piece) {
    if (!piece.empty()) {
        line += (line.empty() ? "" : between) + piece;
    }
}

std::string worstText(const std::optional<FleetRow>& worst) {
    return worst ? worstWord() + " " + machineText(*worst) : std::string();
}

} // namespace

std::string figureName(FleetFigure figure) {
    switch (figure) {
    case FleetFigure::memory:
        return NSLocalizedString("host_MEMORY");
    case FleetFigure::storage:
        return NSLocalizedString("host_STORAGE");
    case FleetFigure::processor:
        return NSLocalizedString("host_PROCESSOR");
    case FleetFigure::received:
        return "\u2193";
    case FleetFigure::sent:
        break;
    }
    return "\u2191";
}

std::string figureText(FleetFigure figure, const std::optional<double>& value) {
    if (!value || !std::isfinite(*value)) {
        return nothing;
    }
    if (figure != FleetFigure::received && figure != FleetFigure::sent) {
        return percentText(*value);
    }
    return bytesText(*value) + "/s";
}

std::string bytesText(double bytes) {
    constexpr double most = 9e18; // inside 64 bits
    const auto whole = static_cast<std::int64_t>(std::llround(std::clamp(bytes, 0.0, most)));
    std::string text = platform::NSByteCountFormatter::stringFromByteCount(
        whole, platform::NSByteCountFormatterCountStyle::decimal);
    if (whole == 0) { // "Zero KB": a word in a column of digits
        const std::size_t blank = text.find_first_of(" \xC2\xE2");
        text.replace(0, std::min(blank, text.size()), countText(0));
    }
    return text;
}

std::string answeringText(const FleetCounts& counts) {
    return textWithValue(withNumber("fleet_ANSWERING", counts.answering()), "all",
                         countText(counts.machines));
}

std::string bandCountText(Band band, std::size_t count) {
    switch (band) {
    case Band::down:
        return withNumber("fleet_DOWN", count);
    case Band::red:
        return withNumber("fleet_RED", count);
    case Band::orange:
        return withNumber("fleet_ORANGE", count);
    case Band::stale:
        return withNumber("fleet_STALE", count);
    case Band::unknown:
        return withNumber("fleet_UNKNOWN", count);
    case Band::yellow:
    case Band::green:
    case Band::neutral:
        break;
    }
    return {};
}

std::string countsText(const FleetCounts& counts) {
    std::string line = answeringText(counts);
    for (const Band band : {Band::down, Band::red, Band::orange, Band::stale, Band::unknown}) {
        if (counts.of(band) > 0) {
            add(line, bandCountText(band, counts.of(band)));
        }
    }
    return line;
}

std::string worstWord() {
    return NSLocalizedString("fleet_WORST");
}

std::string machineText(const FleetRow& row) {
    if (!row.figure) {
        return row.machine->name;
    }
    return row.machine->name + " " + figureName(*row.figure) + " " +
           figureText(*row.figure, row.machine->figure(*row.figure));
}

std::string headerText(const FleetTable& table) {
    std::string line = countsText(table.counts());
    add(line, worstText(table.worst()));
    return line;
}

std::string groupText(const FleetGroup& group) {
    std::string line =
        group.counts.silent == 0 ? countText(group.counts.machines) : answeringText(group.counts);
    add(line, worstText(group.worst));
    return line;
}

std::string ageText(std::chrono::duration<double> age) {
    const auto seconds = static_cast<std::uint64_t>(std::llround(std::max(age.count(), 0.0)));
    constexpr std::uint64_t minute = 60;
    constexpr std::uint64_t hour = 60 * minute;
    return seconds < 2 * minute ? withNumber("fleet_AGESECONDS", seconds)
           : seconds < 2 * hour ? withNumber("fleet_AGEMINUTES", seconds / minute)
                                : withNumber("fleet_AGEHOURS", seconds / hour);
}

std::string averageText(const platform::FleetSnapshot& snapshot, std::chrono::nanoseconds now) {
    std::optional<std::chrono::nanoseconds> oldest;
    std::chrono::duration<double> interval{};
    for (const platform::FleetOrigin& source : snapshot.sources) {
        if (source.answered && !source.isSilent) {
            oldest = oldest ? std::min(*oldest, *source.answered) : *source.answered;
            interval = std::max(interval, source.interval);
        }
    }
    return oldest ? averageText(interval, now - *oldest) : std::string();
}

std::string averageText(std::chrono::duration<double> interval, std::chrono::duration<double> age) {
    std::string line;
    if (interval.count() > 0) {
        const auto seconds = static_cast<std::uint64_t>(std::llround(std::max(interval.count(), 1.0)));
        add(line, withNumber("fleet_AVERAGE", seconds));
    }
    add(line, ageText(age));
    return line;
}

std::string downText(const std::optional<std::chrono::system_clock::time_point>& since,
                     const std::string& reason) {
    if (!since) {
        return {};
    }
    const std::string text =
        textWithValue(NSLocalizedString("fleet_DOWNSINCE"), "time", platform::clockText(*since));
    return reason.empty() ? text : text + ": " + reason;
}

std::string noteText(const FleetRow& row) {
    if (row.machine->downSince) {
        return downText(row.machine->downSince);
    }
    return row.band == Band::stale && row.age ? ageText(*row.age) : std::string();
}

std::vector<std::string> sourceProblems(const platform::FleetSnapshot& snapshot) {
    std::vector<std::string> problems;
    for (const platform::FleetOrigin& source : snapshot.sources) {
        if (!source.problem.empty()) {
            problems.push_back(source.name + ": " + source.problem);
        }
    }
    return problems;
}

} // namespace vantor::fleet
