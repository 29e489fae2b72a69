// SPDX-License-Identifier: MIT
#include "sysinfo/program/Figures.hpp"

#include "platform/core/ScaledCount.hpp"
#include "sysinfo/CpuDetect/GPUDetection.hpp"

#include <array>

namespace vantor::sysinfo {

std::string plural(std::uint64_t count, const char* unit) {
    return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

Text bytes(Count count) {
    return count ? Text(CpuDetect::byteSizeText(*count)) : std::nullopt;
}

Text counted(Count online, Count inAll) {
    if (!online) {
        return std::nullopt;
    }
    const std::string shown = std::to_string(*online);
    return inAll && *inAll != *online ? shown + " of " + std::to_string(*inAll) : shown;
}

Text caches(Count size, Count users, Count usersPerCache) {
    if (!size) {
        return std::nullopt;
    }
    const std::string one = *bytes(size);
    if (!users || usersPerCache.value_or(0) == 0) {
        return one + " each";
    }
    const std::uint64_t instances = (*users + *usersPerCache - 1) / *usersPerCache;
    return instances == 1 ? one : std::to_string(instances) + " x " + one;
}

Text frequency(Count hertz) {
    if (!hertz) {
        return std::nullopt;
    }
    const platform::ScaledCount scaled = platform::scaledCount(*hertz, 1000); // GHz have two decimals
    std::string digits = std::to_string(scaled.digits);
    if (scaled.fraction > 0) {
        digits.insert(digits.size() - scaled.fraction, ".");
    }
    constexpr std::array<const char*, 7> units{"Hz", "kHz", "MHz", "GHz", "THz", "PHz", "EHz"};
    return digits + " " + units.at(scaled.unit);
}

Text duration(Count seconds) {
    if (!seconds) {
        return std::nullopt;
    }
    const std::uint64_t minutes = *seconds / 60;
    const std::uint64_t hours = minutes / 60;
    return hours >= 24   ? plural(hours / 24, "day") + ", " + plural(hours % 24, "hour")
           : hours > 0   ? plural(hours, "hour") + ", " + plural(minutes % 60, "minute")
           : minutes > 0 ? plural(minutes, "minute")
                         : "less than a minute";
}

} // namespace vantor::sysinfo
