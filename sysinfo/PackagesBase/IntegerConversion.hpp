// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/FatalStop.hpp"
#include "sysinfo/PackagesBase/Types.hpp"

#include <array>
#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

/// The checked conversion between integers: a number that does not fit is a broken invariant, except while a
/// test asks whether it would fit.
namespace vantor::PackagesBase {

/// While one lives, integer conversions of this thread answer absent where they would stop the process. The
/// tests named `is…` put one in place around whatever members a class converts by. They nest.
class IntegerConversionTest {
public:
    IntegerConversionTest() : m_before(std::exchange(runs, true)) {}
    ~IntegerConversionTest() { runs = m_before; }
    IntegerConversionTest(const IntegerConversionTest&) = delete;
    IntegerConversionTest& operator=(const IntegerConversionTest&) = delete;

    [[nodiscard]] static bool isRunning() { return runs; }

private:
    static inline constinit thread_local bool runs = false;
    bool m_before;
};

/// Stops the process with the number and the type that it does not fit: "intValue: 300 does not fit an
/// unsigned integer of 8 bits". Does not allocate.
template<FixedWidthInteger To>
[[noreturn]] void stopForNumber(FixedWidthInteger auto number) {
    std::array<char, 96> line{};
    char* end = line.data();
    const auto add = [&](std::string_view text) { end += text.copy(end, text.size()); };
    const auto addNumber = [&](auto value) {
        end = std::to_chars(end, line.data() + line.size(), value).ptr;
    };
    add("intValue: ");
    addNumber(number);
    add(" does not fit ");
    add(std::is_signed_v<To> ? "a signed integer of " : "an unsigned integer of ");
    addNumber(sizeof(To) * 8);
    add(" bits");
    platform::fatalStop({line.data(), end});
}

/// The same number as a To.
template<FixedWidthInteger To>
[[nodiscard]] std::optional<To> convertedInteger(FixedWidthInteger auto number) {
    if (std::in_range<To>(number)) {
        return static_cast<To>(number);
    }
    if (IntegerConversionTest::isRunning()) {
        return std::nullopt;
    }
    stopForNumber<To>(number);
}

} // namespace vantor::PackagesBase
