// SPDX-License-Identifier: MIT
#include "fleet/FleetBand.hpp"

#include "charts/LevelColor.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace vantor::fleet {

using platform::FleetFigure;
using platform::FleetMachine;
using platform::UIColor;

namespace {

UIColor ofBytes(unsigned color) {
    const auto part = [color](unsigned shift) { return ((color >> shift) & 0xFFU) / 255.0; };
    return UIColor::colorWithRed(part(16), part(8), part(0), 1);
}

struct BandLook {
    const char* name;
    const char* sign;
    unsigned light;
    unsigned dark;
};

constexpr std::array<BandLook, bandCount> looks{{
    {"down", "\u00D7", 0x3A3A3C, 0xE5E5EA},
    {"red", "", 0xFF3B30, 0xFF453A},
    {"orange", "", 0xFE9226, 0xFE9226},
    {"yellow", "", 0xFFEEAA, 0x6E6017},
    {"green", "", 0xCDEFD6, 0x27613A},
    {"neutral", "", 0xC6D8EC, 0x44699A},
    {"stale", "~", 0xE4E4EA, 0x3A3A3E},
    {"unknown", "\u2013", 0xE4E4EA, 0x3A3A3E},
}};

const BandLook& look(Band band) {
    return looks.at(static_cast<std::size_t>(band));
}

std::span<const FleetFigure> figuresOf(FleetOrder order) {
    static constexpr std::array<FleetFigure, 5> all{FleetFigure::memory, FleetFigure::storage,
                                                    FleetFigure::processor, FleetFigure::received,
                                                    FleetFigure::sent};
    const std::span<const FleetFigure> figures(all);
    switch (order) {
    case FleetOrder::worst:
    case FleetOrder::name:
        break;
    case FleetOrder::memory:
        return figures.subspan(0, 1);
    case FleetOrder::storage:
        return figures.subspan(1, 1);
    case FleetOrder::processor:
        return figures.subspan(2, 1);
    case FleetOrder::network:
        return figures.subspan(3, 2);
    }
    return figures.first(3);
}

std::optional<FleetFigure> greatest(const FleetMachine& machine, FleetOrder order) {
    std::optional<FleetFigure> found;
    for (const FleetFigure figure : figuresOf(order)) {
        const std::optional<double>& value = machine.figure(figure);
        if (value && std::isfinite(*value) && (!found || *value > *machine.figure(*found))) {
            found = figure;
        }
    }
    return found;
}

} // namespace

std::optional<FleetOrder> orderNamed(std::string_view word) {
    static constexpr std::array<std::string_view, 6> words{"worst",   "name", "ram",
                                                           "storage", "cpu",  "network"};
    const auto found = std::ranges::find(words, word);
    return found != words.end() ? std::optional(static_cast<FleetOrder>(found - words.begin()))
                                : std::nullopt;
}

const char* bandSign(Band band) {
    return look(band).sign;
}

const char* bandName(Band band) {
    return look(band).name;
}

UIColor bandColor(Band band, bool isDark) {
    return ofBytes(isDark ? look(band).dark : look(band).light);
}

Band shareBand(double share) {
    constexpr double farOff = 1e9; // safely inside 64 bits
    switch (levelOf(static_cast<std::int64_t>(std::clamp(share, 0.0, farOff) * 100))) {
    case Level::green:
        return Band::green;
    case Level::yellow:
        return Band::yellow;
    case Level::orange:
        return Band::orange;
    case Level::red:
        break;
    }
    return Band::red;
}

Standing standingOf(const FleetMachine& machine, const platform::FleetSnapshot& snapshot, FleetOrder order,
                    std::chrono::nanoseconds now) {
    Standing standing;
    standing.figure = greatest(machine, order);
    if (machine.taken) {
        standing.age = std::max(now - *machine.taken, std::chrono::nanoseconds(0));
    }
    if (machine.downSince) {
        standing.band = Band::down;
    } else if (!standing.age || !standing.figure) {
        standing.band = Band::unknown;
    } else if (*standing.age > snapshot.sources.at(machine.source).staleAfter) {
        standing.band = Band::stale;
    } else {
        standing.band =
            order == FleetOrder::network ? Band::neutral : shareBand(*machine.figure(*standing.figure));
    }
    return standing;
}

std::uint8_t bandRank(const Standing& standing, const FleetMachine& machine, FleetOrder order) {
    constexpr std::uint8_t rest = 99;
    if (order == FleetOrder::name) {
        return 0;
    }
    if (standing.band == Band::neutral) {
        constexpr double quiet = 1000; // bytes a second below which machines only chatter
        constexpr double decades = 20; // no network has as many
        const double rate = std::max(*machine.figure(*standing.figure), quiet);
        return static_cast<std::uint8_t>(decades - std::min(std::floor(std::log10(rate)), decades) + 1);
    }
    return standing.band <= Band::orange ? static_cast<std::uint8_t>(standing.band) : rest;
}

} // namespace vantor::fleet
