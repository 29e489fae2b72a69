// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedFleet.hpp"

#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>

namespace vantor::platform {

namespace {

using Labels = std::vector<std::pair<std::string, std::string>>;

/// A kind of machine and what its kind does most of the time.
struct Role {
    const char* name;
    unsigned share; ///< in a hundred machines
    const char* volume;
    double memory, storage, processor; ///< what they use at least
    double rate;                       ///< bytes a second
};

constexpr std::array<Role, 5> roles{{
    {"web", 58, "/", 0.28, 0.22, 0.08, 4e5},
    {"edge", 14, "/var/cache", 0.30, 0.34, 0.10, 6e6},
    {"db", 12, "/var/lib/postgresql", 0.38, 0.30, 0.12, 9e4},
    {"cache", 9, "/", 0.34, 0.15, 0.04, 1e6},
    {"ci", 7, "/srv", 0.20, 0.30, 0.02, 5e3},
}};
constexpr std::array<const char*, 3> places{"ams", "fra", "nyc"};

/// A number from 0 to 1 that is always the same for the same two.
double chance(std::uint64_t machine, std::uint64_t about) {
    std::uint64_t mixed = machine * 0x9E3779B97F4A7C15ULL + about * 0xC2B2AE3D27D4EB4FULL + 1;
    for (const std::uint64_t factor : {0xBF58476D1CE4E5B9ULL, 0x94D049BB133111EBULL}) {
        mixed = (mixed ^ mixed >> 30U) * factor;
    }
    return static_cast<double>(mixed >> 11U) / 9007199254740992.0; // 2 to the 53rd
}

const Role& roleOf(std::uint64_t machine) {
    auto hundredth = static_cast<unsigned>(machine * 37 % 100); // mixes them, and keeps the shares
    for (const Role& role : roles) {
        if (hundredth < role.share) {
            return role;
        }
        hundredth -= role.share;
    }
    return roles.front();
}

/// A share that drifts about a level of the machine's own. One in a hundred machines or so is nearly full,
/// and of the first forty one of each figure, so that a small fleet shows it too.
double shareAt(std::uint64_t machine, std::uint64_t about, double least, std::uint64_t tick) {
    const std::uint64_t turnOfFew = machine < 41 ? (machine + 9 * about) % 41 : 0;
    const double luck = turnOfFew == 4 ? 0.002 : turnOfFew == 11 ? 0.009 : chance(machine, about);
    const double level = luck < 0.003   ? 0.87 + 25 * luck
                         : luck < 0.012 ? 0.70 + 7 * luck
                                        : least + 0.30 * chance(machine, about + 10);
    const double turn = static_cast<double>(tick) / 40 + chance(machine, about + 20);
    return std::clamp(level + 0.015 * std::sin(2 * std::numbers::pi * turn), 0.0, 1.0);
}

void setFigures(FleetMachine& machine, std::uint64_t number, std::uint64_t tick) {
    const auto isKind = [&machine](const Role& role) { return machine.name.starts_with(role.name); };
    const Role& role = *std::ranges::find_if(roles, isKind);
    const double burst = std::pow(10, 1.5 * chance(number, 4)) * (1 + 0.2 * chance(number, 100 + tick));
    machine.figures = {shareAt(number, 1, role.memory, tick), shareAt(number, 2, role.storage, tick),
                       shareAt(number, 3, role.processor, tick), std::floor(role.rate * burst),
                       std::floor(role.rate * burst * (0.3 + 2 * chance(number, 5)))};
}

/// Names, labels and volumes, ordered as a snapshot is.
FleetSnapshot namesOf(std::size_t count) {
    FleetSnapshot names;
    const int digits = std::max(2, static_cast<int>(std::to_string(count).size()));
    std::map<std::string, std::shared_ptr<const Labels>> labels;
    std::map<std::string, unsigned> numbers;
    for (std::uint64_t machine = 0; machine < count; machine++) {
        const Role& role = roleOf(machine);
        const char* const place = places.at(static_cast<std::size_t>(chance(machine, 6) * 3));
        std::shared_ptr<const Labels>& shared = labels[std::string(role.name) + place];
        if (shared == nullptr) {
            shared =
                std::make_shared<const Labels>(Labels{{"dc", place}, {"job", "node"}, {"role", role.name}});
        }
        std::array<char, 32> name{};
        std::snprintf(name.data(), name.size(), "%s%0*u", role.name, digits, ++numbers[role.name]);
        FleetMachine made;
        made.key = name.data();
        made.name = name.data();
        made.labels = shared;
        made.volume = role.volume;
        names.machines.push_back(std::move(made));
    }
    std::ranges::sort(names.machines, {}, &FleetMachine::key);
    return names;
}

} // namespace

void SimulatedFleet::start() {
    if (m_timer != nullptr) {
        return;
    }
    if (m_first == nullptr) {
        m_started = std::chrono::system_clock::now();
        m_first = std::make_shared<const FleetSnapshot>(namesOf(m_count));
    }
    m_timer = NSTimer::scheduledTimerWithTimeInterval(
        std::chrono::duration<double>(interval).count(), [this] { tick(); }, true);
    tick();
}

void SimulatedFleet::pause() {
    if (m_timer != nullptr) {
        m_timer->invalidate();
        m_timer.reset();
    }
}

/// Few of many are down, stale or unknown, yet some of few: the first of each kind comes early.
void SimulatedFleet::tell(FleetMachine& machine, std::uint64_t number, std::uint64_t tick) const {
    constexpr std::chrono::minutes longAgo{4};
    const bool isDown = number % 331 == 5;
    const bool isStale = number % 397 == 17;
    const bool isUnknown = number % 499 == 29;
    if (!isUnknown) {
        const std::chrono::nanoseconds now = RunLoop::main().now().time_since_epoch();
        setFigures(machine, number, isDown || isStale ? 0 : tick);
        machine.taken = isDown || isStale ? now - interval * static_cast<std::int64_t>(tick) - longAgo : now;
    }
    if (isDown) {
        machine.downSince = m_started - longAgo;
        machine.problem = "connection refused";
    }
}

void SimulatedFleet::tick() {
    auto next = std::make_shared<FleetSnapshot>(*m_first);
    next->sources = {{"demo", interval, 3 * interval, RunLoop::main().now().time_since_epoch(), {}, false}};
    for (std::uint64_t i = 0; i < next->machines.size(); i++) {
        tell(next->machines[i], i, m_ticks);
    }
    m_ticks++;
    m_snapshot = std::move(next);
    if (m_handler) {
        m_handler();
    }
}

std::optional<FleetMachine> SimulatedFleet::machineAt(std::string_view key, std::uint64_t tick) const {
    if (m_first == nullptr) {
        return std::nullopt;
    }
    const auto found = std::ranges::lower_bound(m_first->machines, key, {}, &FleetMachine::key);
    if (found == m_first->machines.end() || found->key != key) {
        return std::nullopt;
    }
    FleetMachine machine = *found;
    tell(machine, static_cast<std::uint64_t>(found - m_first->machines.begin()), tick);
    return machine;
}

} // namespace vantor::platform
