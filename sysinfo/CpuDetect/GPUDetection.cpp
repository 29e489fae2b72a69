// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/GPUDetection.hpp"

#include "platform/core/ScaledCount.hpp"
#include "sysinfo/SystemValues/Replay.hpp"

#include <algorithm>
#include <array>
#include <ostream>

namespace vantor::CpuDetect {

std::string byteSizeText(std::uint64_t bytes) {
    if (bytes < 2) {
        return bytes == 0 ? "Zero KB" : "1 byte";
    }
    constexpr std::array<const char*, 7> units{"bytes", "KB", "MB", "GB", "TB", "PB", "EB"};
    const platform::ScaledCount scaled = platform::scaledCount(bytes, 1024);
    std::string text = std::to_string(scaled.digits);
    const std::size_t point = text.size() - scaled.fraction; // at least one digit is in front of it
    if (scaled.fraction > 0) {
        text.insert(point, ".");
    }
    if (point > 3) { // at most 1,023 units
        text.insert(point - 3, ",");
    }
    return text + " " + units.at(scaled.unit);
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
    const std::optional<platform::MTLDevice> device = SystemValues::Replay::isOn()
                                                          ? SystemValues::Replay::device()
                                                          : platform::MTLCreateSystemDefaultDevice();
    return device ? std::optional(GPU(*device)) : std::nullopt;
}

} // namespace vantor::CpuDetect
