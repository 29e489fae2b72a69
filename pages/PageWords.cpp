// SPDX-License-Identifier: MIT
#include "pages/PageWords.hpp"

#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/viewer/Viewer.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace vantor {

using platform::NSLocalizedString;
using platform::textWithValue;

namespace {

std::string memorySize(std::uint64_t bytes) {
    return platform::NSByteCountFormatter::stringFromByteCount(
        static_cast<std::int64_t>(bytes), platform::NSByteCountFormatterCountStyle::memory);
}

std::string_view keyOf(MemoryPartKind kind) {
    switch (kind) {
    case MemoryPartKind::applications:
        return "page_APPLICATIONS";
    case MemoryPartKind::kernel:
        return "page_KERNEL";
    case MemoryPartKind::compressed:
        return "page_COMPRESSED";
    case MemoryPartKind::inactive:
        return "page_INACTIVE";
    case MemoryPartKind::cache:
        return "page_CACHE";
    case MemoryPartKind::free:
        break;
    }
    return "page_FREE";
}

} // namespace

std::string partWords(MemoryPartKind kind) {
    return NSLocalizedString(keyOf(kind));
}

std::string swapWords(const std::optional<platform::SwapSpace>& swap) {
    if (!swap || swap->total == 0) {
        return NSLocalizedString("page_NOSWAP");
    }
    return textWithValue(
        textWithValue(NSLocalizedString("page_SWAP"), "used", memorySize(swap->total - swap->free)), "total",
        memorySize(swap->total));
}

/// The kernel's average says for how much of the time some program waited.
std::string pressureWords(const std::optional<platform::Pressure>& pressure, WaitedFor resource) {
    if (!pressure) {
        return {};
    }
    constexpr double seconds = 300;
    const auto waited = static_cast<long>(std::lround(pressure->average300 / 100 * seconds));
    const bool isMemory = resource == WaitedFor::memory;
    if (waited == 0) {
        return NSLocalizedString(isMemory ? "page_RAMNOWAIT" : "page_CPUNOWAIT");
    }
    return textWithValue(NSLocalizedString(isMemory ? "page_RAMWAIT" : "page_CPUWAIT"), "seconds",
                         decimalWords(static_cast<double>(waited), 0));
}

std::string applicationWords(const platform::ApplicationUse& use) {
    return use.isService ? NSLocalizedString("page_SERVICES") : use.name;
}

std::string decimalWords(double value, int digits) {
    if (!std::isfinite(value)) {
        return "\xE2\x80\x93"; // an en dash
    }
    std::array<char, 64> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, digits);
    const platform::LocaleSigns& signs = platform::currentViewer().localeSigns();
    std::string words;
    for (const char* at = text.data(); at != result.ptr; ++at) {
        words += *at == '.'   ? signs.decimal
                 : *at == '-' ? signs.minus
                              : signs.digits.at(static_cast<std::size_t>(*at - '0'));
    }
    return words;
}

} // namespace vantor
