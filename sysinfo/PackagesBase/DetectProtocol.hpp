// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/SimulatableDetectable.hpp"

namespace vantor::PackagesBase {

/// Has a static `current()`: the value of the type that applies to the running system, or absent.
template<class T>
concept DetectProtocol = requires {
    { T::current() } -> std::same_as<std::optional<T>>;
};

/// Supplies `current()` to a simulatable type whose status is the type itself: its `status()`, always
/// present. Such a type is incomplete inside its own braces: declare its `static std::optional<T>` members
/// there and define them, and `detectActualStatus`, after the closing one.
template<class Self>
struct DetectProtocolMixin {
    [[nodiscard]] static auto current() {
        static_assert(SimulatableDetectableBase<Self>, "this type needs what SimulatableDetectableBase asks");
        static_assert(std::same_as<typename Self::T, Self>, "this type's status `T` must be the type itself");
        return std::optional<Self>(Self::status());
    }
};

} // namespace vantor::PackagesBase
