// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/GPUDetection.hpp"

#include <algorithm>
#include <array>
#include <ostream>

namespace vantor::CpuDetect {

namespace {

struct Unit {
    const char* name;
    unsigned shift;
    std::uint64_t parts; ///< of the last digit shown
};

constexpr std::array<Unit, 6> units{
    {{"KB", 10, 1}, {"MB", 20, 10}, {"GB", 30, 100}, {"TB", 40, 100}, {"PB", 50, 100}, {"EB", 60, 100}}};

/// Halves to even, without leaving integers: `whole` units and a remainder below one unit.
std::uint64_t roundedParts(std::uint64_t bytes, const Unit& unit) {
    const std::uint64_t whole = bytes >> unit.shift;
    const std::uint64_t rest = (bytes - (whole << unit.shift)) >> (unit.shift > 50 ? 10U : 0U);
    const unsigned shift = unit.shift > 50 ? unit.shift - 10 : unit.shift; // leaves room for two digits
    const std::uint64_t scaled = rest * unit.parts;
    std::uint64_t part = scaled >> shift;
    const std::uint64_t left = scaled - (part << shift);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    const std::uint64_t before = whole * unit.parts + part;
    part = left > half || (left == half && before % 2 == 1) ? before + 1 : before;
    return part;
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3) {
        digits.insert(at - 3, ",");
    }
    return digits;
}

std::string text(std::uint64_t parts, const Unit& unit) {
    std::string fraction;
    for (std::uint64_t rest = parts % unit.parts, digit = unit.parts / 10; rest != 0; digit /= 10) {
        fraction += static_cast<char>('0' + rest / digit);
        rest %= digit;
    }
    return grouped(parts / unit.parts) + (fraction.empty() ? "" : "." + fraction) + " " + unit.name;
}

} // namespace

std::string byteSizeText(std::uint64_t bytes) {
    if (bytes < 1024) {
        return bytes == 0 ? "Zero KB" : bytes == 1 ? "1 byte" : grouped(bytes) + " bytes";
    }
    for (const Unit& unit : units) {
        const std::uint64_t parts = roundedParts(bytes, unit);
        if (parts < 1024 * unit.parts || &unit == &units.back()) { // chosen after rounding: never "1,024 KB"
            return text(parts, unit);
        }
    }
    return {};
}

GPUDetection::GPU::GPU(const platform::MTLDevice& device)
    : name(device.name),
      vram(std::max(device.maxBufferLength, device.currentAllocatedSize)),
      hasUnifiedMemory(device.hasUnifiedMemory.value_or(true)) {}

std::string GPUDetection::GPU::infoString() const {
    return name + " " + byteSizeText(vram) + (hasUnifiedMemory ? " (Unified)" : "");
}

std::ostream& operator<<(std::ostream& out, const GPUDetection::GPU& gpu) {
    return out << gpu.infoString();
}

std::optional<GPUDetection::GPU> GPUDetection::systemDefault() {
    const std::optional<platform::MTLDevice> device = platform::MTLCreateSystemDefaultDevice();
    return device ? std::optional(GPU(*device)) : std::nullopt;
}

} // namespace vantor::CpuDetect
