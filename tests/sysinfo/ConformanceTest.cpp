// SPDX-License-Identifier: MIT
// A program's own types conform to every protocol.
#include "sysinfo/PackagesBase/PackagesBase.hpp"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace vantor;
using namespace vantor::PackagesBase;

/// A charge from 0 to 100. Its numbers go through the library's own conversions.
struct Level : RepresentableMixin<Level> {
    int percent;
    explicit Level(int value) : percent(value) {}

    [[nodiscard]] std::optional<std::string> stringValue() const { return std::to_string(percent) + "%"; }
    [[nodiscard]] std::optional<bool> boolValue() const { return std::nullopt; }
    [[nodiscard]] std::optional<bool> cStyleBoolValue() const { return percent > 0; }
    template<FixedWidthInteger I>
    [[nodiscard]] std::optional<I> intValue() const {
        return PackagesBase::intValue<I>(percent);
    }
    template<BinaryFloatingPoint F>
    [[nodiscard]] std::optional<F> floatingPointValue() const {
        return static_cast<F>(percent / 100.0);
    }
    [[nodiscard]] Level copy() const { return Level(percent); }
};
static_assert(Representable<Level> && Copying<Level> && Copying<std::vector<Level>>);

TEST(Conformance, AClassConvertsByItsFiveMembers) {
    const Level half(50);
    EXPECT_EQ(half.int64Value(), 50);
    EXPECT_EQ(doubleValue(half), 0.5);
    EXPECT_EQ(half.cBoolValue<CBool>(), 1);
    EXPECT_FALSE(isBool(half));
    EXPECT_FALSE(Level(200).isIntOfType(std::int8_t{})); // its own conversion would be fatal
    EXPECT_DEATH((void)Level(200).intValue<std::int8_t>(), "200 does not fit a signed integer of 8 bits");
    EXPECT_EQ(copy(std::vector{half}).front().percent, 50);
}

/// Answers every name with its length.
struct Lengths : FetchProtocolDataBoolFromIntMixin<Lengths>,
                 FetchProtocolDataBoolFromIntInstanceMixin<Lengths> {
    static std::optional<std::string> getString(std::string_view name) { return std::string(name); }
    static std::optional<Data> getData(std::string_view name) { return Data(name.size()); }
    template<FixedWidthInteger T>
    static std::optional<T> getInteger(std::string_view name) {
        return name == "none" ? std::nullopt : std::optional(static_cast<T>(name.size()));
    }
    using FetchProtocolDataBoolFromIntMixin<Lengths>::getBool;
};
static_assert(FetchProtocolDataBoolFromInt<Lengths> && FetchProtocolDataBoolFromIntInstance<Lengths>);

TEST(Conformance, BoolFromIntTakesOnlyZeroAndOne) {
    EXPECT_EQ(Lengths::getBool(""), false);
    EXPECT_EQ(Lengths().getBool("a"), true);
    EXPECT_EQ(Lengths::getBool("1234567"), std::nullopt);
    EXPECT_EQ(Lengths::getBool("none"), std::nullopt);
}

int detections;

struct Fresh : SimulatableDetectableMixin<Fresh> {
    using T = int;
    static inline std::optional<T> simulatedStatus;
    static T detectActualStatus() { return ++detections; }
};

struct Once : SimulatableDetectableOneTimeMixin<Once>, DetectProtocolMixin<Once> {
    using T = Once;
    int number = 0;
    static std::optional<T> simulatedStatus;
    static std::optional<T> cachedStatus;
    static T detectActualStatus();
};
std::optional<Once> Once::simulatedStatus;
std::optional<Once> Once::cachedStatus;
Once Once::detectActualStatus() {
    Once result;
    result.number = ++detections;
    return result;
}

struct HandClock {
    using time_point = std::chrono::sys_time<std::chrono::milliseconds>;
    static inline time_point time;
    static time_point now() { return time; }
};

struct Periodic : SimulatableDetectableTemporizedMixin<Periodic, HandClock> {
    using T = int;
    static inline std::optional<T> simulatedStatus;
    static inline std::optional<T> cachedStatus;
    static inline HandClock::time_point lastStatusUpdate;
    static inline double statusRefreshInterval = 2.0;
    static T detectActualStatus() {
        HandClock::time += std::chrono::milliseconds(5); // what the detection takes
        return ++detections;
    }
};
static_assert(SimulatableDetectable<Fresh> && SimulatableDetectableOneTime<Once> && DetectProtocol<Once>);
static_assert(SimulatableDetectableTemporized<Periodic> && !DetectProtocol<Periodic>);
static_assert(!SimulatableDetectableOneTime<Periodic> && !SimulatableDetectable<Periodic>);

TEST(Detection, ASimulatedValueRunsNoDetectionAndTouchesNoCache) {
    detections = 0;
    Periodic::cachedStatus.reset();
    Fresh::simulatedStatus = 7;
    Periodic::simulatedStatus = 7;
    EXPECT_EQ(Fresh::status() + Periodic::status(), 14);
    EXPECT_EQ(detections, 0);
    EXPECT_EQ(Periodic::cachedStatus, std::nullopt);
    Fresh::simulatedStatus.reset();
    Periodic::simulatedStatus.reset();
    EXPECT_EQ(Fresh::status(), 1);
    EXPECT_EQ(Fresh::status(), 2);
}

TEST(Detection, OnceIsOnceUntilTheCacheIsCleared) {
    detections = 0;
    Once::cachedStatus.reset();
    EXPECT_EQ(Once::current()->number, 1);
    EXPECT_EQ(Once::status().number, 1);
    Once::cachedStatus.reset();
    EXPECT_EQ(Once::status().number, 2);
}

TEST(Detection, PeriodicDetectsAgainWhenThePeriodHasPassed) {
    using std::chrono::milliseconds;
    detections = 0;
    Periodic::cachedStatus.reset();
    EXPECT_EQ(Periodic::status(), 1);
    EXPECT_EQ(Periodic::lastStatusUpdate, HandClock::time); // the moment after the detection
    HandClock::time += milliseconds(1999);
    EXPECT_EQ(Periodic::status(), 1);
    HandClock::time += milliseconds(1);
    EXPECT_EQ(Periodic::status(), 2);
    HandClock::time -= std::chrono::hours(1);
    EXPECT_EQ(Periodic::status(), 2); // a clock set back keeps the cached value
    Periodic::statusRefreshInterval = 0;
    HandClock::time = Periodic::lastStatusUpdate;
    EXPECT_EQ(Periodic::status(), 3);
}

} // namespace
