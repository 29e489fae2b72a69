// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <concepts>
#include <optional>
#include <type_traits>

/// A detected quantity that can be simulated: one type stands for one quantity, and all its members are
/// static.
///
///     struct Docked : SimulatableDetectableOneTimeMixin<Docked> {
///         using T = bool;
///         static inline std::optional<T> simulatedStatus;
///         static inline std::optional<T> cachedStatus;
///         static T detectActualStatus();
///     };
///
/// The storage is the type's own and lives as long as the process. There is no lock: two threads that find
/// the cache empty may both detect, and the last write wins; a type shared by threads chooses storage for it.
namespace vantor::PackagesBase {

template<class S>
concept HasStatusStorage = requires {
    typename S::T;
    requires std::same_as<std::remove_cvref_t<decltype(S::simulatedStatus)>, std::optional<typename S::T>>;
    { S::detectActualStatus() } -> std::same_as<typename S::T>;
};
template<class S>
concept HasCachedStatus = HasStatusStorage<S> && requires {
    requires std::same_as<std::remove_cvref_t<decltype(S::cachedStatus)>, std::optional<typename S::T>>;
};
template<class S>
concept HasRefreshInterval = HasCachedStatus<S> && requires {
    { S::lastStatusUpdate.time_since_epoch() };
    { S::statusRefreshInterval } -> std::convertible_to<double>;
};

/// `simulatedStatus` (settable), `actualStatus()`, `detectActualStatus()` and `status()`.
template<class S>
concept SimulatableDetectableBase = HasStatusStorage<S> && requires {
    { S::actualStatus() } -> std::same_as<typename S::T>;
    { S::status() } -> std::same_as<typename S::T>;
};

/// Supplies `status()`: the simulated value where there is one, which runs no detection and touches no cache;
/// else `actualStatus()`.
template<class Self>
struct SimulatableDetectableBaseMixin {
    [[nodiscard]] static auto status() {
        static_assert(HasStatusStorage<Self>,
                      "this type needs `using T`, static `optional<T> simulatedStatus` and static "
                      "`T detectActualStatus()`");
        return Self::simulatedStatus ? *Self::simulatedStatus : Self::actualStatus();
    }
};

/// Detects on every read.
template<class Self>
struct SimulatableDetectableMixin : SimulatableDetectableBaseMixin<Self> {
    [[nodiscard]] static auto actualStatus() { return Self::detectActualStatus(); }
};

/// Detects once; `cachedStatus` set to absent makes the next read detect again.
template<class Self>
struct SimulatableDetectableOneTimeMixin : SimulatableDetectableBaseMixin<Self> {
    [[nodiscard]] static auto actualStatus() {
        static_assert(HasCachedStatus<Self>, "this type needs static `optional<T> cachedStatus`");
        if (!Self::cachedStatus) {
            Self::cachedStatus = Self::detectActualStatus();
        }
        return *Self::cachedStatus;
    }
};

/// Detects when nothing is cached or the cache is as old as `statusRefreshInterval` (seconds, a double) or
/// older. A clock that was set back makes the age negative, and the cached value stays. `Clock` is the wall
/// clock unless the type brings another; `lastStatusUpdate` is its `time_point`.
template<class Self, class Clock = std::chrono::system_clock>
struct SimulatableDetectableTemporizedMixin : SimulatableDetectableBaseMixin<Self> {
    [[nodiscard]] static auto actualStatus() {
        static_assert(HasRefreshInterval<Self>,
                      "this type needs static `optional<T> cachedStatus`, `Clock::time_point "
                      "lastStatusUpdate` and `double statusRefreshInterval`");
        if (Self::cachedStatus) {
            const std::chrono::duration<double> elapsed = Clock::now() - Self::lastStatusUpdate;
            if (elapsed.count() < Self::statusRefreshInterval) {
                return *Self::cachedStatus;
            }
        }
        const typename Self::T detected = Self::detectActualStatus();
        Self::cachedStatus = detected;
        Self::lastStatusUpdate = Clock::now();
        return detected;
    }
};

template<class S>
concept SimulatableDetectable =
    SimulatableDetectableBase<S> && std::derived_from<S, SimulatableDetectableMixin<S>>;
template<class S>
concept SimulatableDetectableOneTime = SimulatableDetectableBase<S> && HasCachedStatus<S> &&
                                       std::derived_from<S, SimulatableDetectableOneTimeMixin<S>>;
/// @cond
template<class S, class Clock>
void takesTemporized(const SimulatableDetectableTemporizedMixin<S, Clock>&); // whatever its clock
/// @endcond
template<class S>
concept SimulatableDetectableTemporized =
    SimulatableDetectableBase<S> && HasRefreshInterval<S> &&
    requires(const S& quantity) { PackagesBase::takesTemporized<S>(quantity); };

} // namespace vantor::PackagesBase
