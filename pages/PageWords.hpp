// SPDX-License-Identifier: MIT
#pragma once

#include "pages/MemoryPage.hpp"

#include <cstdint>
#include <optional>
#include <string>

/// What pages say to people in the viewer's language, the same in the window and on the command line. Any
/// thread.
namespace vantor {

/// "cache, given back at once"
[[nodiscard]] std::string partWords(MemoryPartKind kind);

/// A sentence about how much of the swap is in use, or that there is none.
[[nodiscard]] std::string swapWords(const std::optional<platform::SwapSpace>& swap);

enum class WaitedFor : std::uint8_t { memory, processor };
/// "No program waited for memory in the last five minutes."; empty where it is not known.
[[nodiscard]] std::string pressureWords(const std::optional<platform::Pressure>& pressure,
                                        WaitedFor resource);

/// An application's name; services are named in the viewer's language.
[[nodiscard]] std::string applicationWords(const platform::ApplicationUse& use);

/// A number with so many digits behind the viewer's decimal sign; a dash where there is none, such as a share
/// of a time in which no tick passed.
[[nodiscard]] std::string decimalWords(double value, int digits);

} // namespace vantor
