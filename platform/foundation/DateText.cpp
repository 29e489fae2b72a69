// SPDX-License-Identifier: MIT
#include "platform/foundation/DateText.hpp"

#include <array>
#include <cstdio>
#include <ctime>

namespace vantor::platform {

std::string dateDescription(std::chrono::system_clock::time_point instant) {
    using namespace std::chrono;
    // Towards the past, also before 1970, where dropping digits would round up.
    const auto second = floor<seconds>(instant);
    const auto midnight = floor<days>(second);
    const year_month_day date{midnight};
    const hh_mm_ss time{second - midnight};
    std::array<char, 48> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d +0000",
                      static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                      static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                      static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::chrono::seconds secondsFromGMT(std::chrono::system_clock::time_point instant) {
    const std::time_t time = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch().count();
    std::tm local{};
    ::tzset(); // localtime_r alone would keep the zone of the first call
    if (::localtime_r(&time, &local) == nullptr) {
        return std::chrono::seconds{0};
    }
    return std::chrono::seconds{local.tm_gmtoff};
}

std::string clockText(std::chrono::system_clock::time_point instant) {
    const std::time_t time = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch().count();
    std::tm local{};
    ::localtime_r(&time, &local);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%H:%M", &local)};
}

} // namespace vantor::platform
