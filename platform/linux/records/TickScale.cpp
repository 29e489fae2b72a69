// SPDX-License-Identifier: MIT
#include "platform/linux/records/TickScale.hpp"

#include "platform/linux/figures/TickAccount.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>

namespace vantor::platform::linux {

namespace {

constexpr double day = 86400;
constexpr double year = 365.25 * day;
constexpr double planned = 6 * year;
constexpr double tail = 1 * year;        ///< how long the plan's exponential end lasts
constexpr double surplusTime = 30 * day; ///< in which what is above the plan may be spent
constexpr double range = 0xFFFFFFFFp0;
constexpr double evenPart = 0.75 * range;
constexpr double shortest = 2,
                 longest = 60; ///< an interval's seconds as far as they count: the range is not to
                               ///< be wasted on a long one, nor a short one be left without units
constexpr std::uint32_t mostUnits = 10000; ///< two decimals of a percentage
constexpr std::uint32_t sinceBoot = 1000000;

/// What should be left of the even part at an age, and how fast it is to go.
struct Plan {
    double left;
    double perSecond;
};
Plan planAt(double age) {
    constexpr double slope = evenPart / planned;
    if (age <= planned - tail) {
        return {evenPart - slope * age, slope};
    }
    const double left = slope * tail * std::exp(-(age - (planned - tail)) / tail);
    return {left, left / tail};
}

using Shares = std::array<double, 4>;
using Units = std::array<std::uint32_t, 4>;

/// Whole numbers with the given sum in the given proportions: rounded down, and the units left over to the
/// largest remainders.
Units proportional(const Shares& shares, std::uint32_t sum) {
    Units units{};
    Shares remainders{};
    std::uint32_t given = 0;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const double exact = shares[i] * sum;
        units[i] = static_cast<std::uint32_t>(exact);
        remainders[i] = exact - units[i];
        given += units[i];
    }
    for (; given < sum; ++given) {
        const auto largest = std::max_element(remainders.begin(), remainders.end());
        ++units[static_cast<std::size_t>(largest - remainders.begin())];
        *largest = -1;
    }
    return units;
}

double worstError(const Shares& shares, const Units& units, std::uint32_t sum) {
    double worst = 0;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        worst = std::max(worst, std::abs(units[i] / static_cast<double>(sum) - shares[i]));
    }
    return worst;
}

/// The best proportions among those with the `candidates` highest sums up to `most`.
Units closest(const Shares& shares, std::uint32_t most) {
    constexpr std::uint32_t candidates = 128;
    Units best{};
    double least = std::numeric_limits<double>::infinity();
    for (std::uint32_t sum = most > candidates ? most - candidates : 1; sum <= most; ++sum) {
        const Units units = proportional(shares, sum);
        const double error = worstError(shares, units, sum);
        if (error < least) {
            least = error;
            best = units;
        }
    }
    return best;
}

/// The interval's ticks themselves, in lowest terms, where that is cheap enough.
std::optional<Units> exactly(const ProcessorTimes& passed, std::uint32_t most) {
    const std::uint64_t divisor =
        std::gcd(std::gcd(passed.user, passed.system), std::gcd(passed.idle, passed.nice));
    if (sum(passed) / divisor > most) {
        return std::nullopt;
    }
    const auto units = [divisor](std::uint64_t ticks) { return static_cast<std::uint32_t>(ticks / divisor); };
    return Units{units(passed.user), units(passed.system), units(passed.idle), units(passed.nice)};
}

void rise(std::uint32_t& counter, std::uint32_t units) {
    counter += std::min(units, std::numeric_limits<std::uint32_t>::max() - counter);
}

} // namespace

double TickScale::remaining() const {
    return range - std::max({m_counters.user, m_counters.system, m_counters.idle, m_counters.nice});
}

std::uint32_t TickScale::highestPlanned(double age) {
    return static_cast<std::uint32_t>(range - planAt(age).left -
                                      (range - evenPart) * std::exp(-age / surplusTime));
}

std::uint32_t TickScale::allowance(std::chrono::nanoseconds elapsed) const {
    const Plan plan = planAt(m_age);
    const double perSecond = plan.perSecond + (remaining() - plan.left) / surplusTime;
    const double seconds = std::clamp(std::chrono::duration<double>(elapsed).count(), shortest, longest);
    return static_cast<std::uint32_t>(std::clamp(perSecond * seconds, 1.0, double{mostUnits}));
}

host_cpu_load_info TickScale::add(const ProcessorTimes& passed, std::chrono::nanoseconds elapsed) {
    const std::uint64_t all = sum(passed);
    if (all == 0) {
        return m_counters;
    }
    // The first answer stands for all the time since boot and is given once.
    const std::uint32_t most = m_started ? allowance(elapsed) : sinceBoot;
    std::optional<Units> units = exactly(passed, most);
    if (!units) {
        const auto share = [all](std::uint64_t ticks) {
            return static_cast<double>(ticks) / static_cast<double>(all);
        };
        units =
            closest({share(passed.user), share(passed.system), share(passed.idle), share(passed.nice)}, most);
    }
    m_started = true;
    m_age += std::max(0.0, std::chrono::duration<double>(elapsed).count());
    rise(m_counters.user, (*units)[0]);
    rise(m_counters.system, (*units)[1]);
    rise(m_counters.idle, (*units)[2]);
    rise(m_counters.nice, (*units)[3]);
    return m_counters;
}

} // namespace vantor::platform::linux
