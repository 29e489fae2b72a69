// SPDX-License-Identifier: MIT
#include "platform/linux/figures/DefaultRoutes.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace vantor::platform::linux {

namespace {

/// RTF_UP and RTF_REJECT of include/uapi/linux/route.h.
bool isInUse(std::string_view flags) {
    constexpr std::uint64_t up = 1, reject = 0x200;
    const std::uint64_t bits = numberFrom(flags, 16).value_or(0);
    return (bits & up) != 0 && (bits & reject) == 0;
}

bool isZero(std::string_view address) {
    return !address.empty() && std::ranges::all_of(address, [](char digit) { return digit == '0'; });
}

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line)) {
        found.push_back(word);
    }
    return found;
}

template<class Test>
void addLinks(std::set<std::string>& links, std::string_view text, std::size_t columns, std::size_t name,
              const Test& isDefault) {
    while (const std::optional<Line> line = takeLine(text)) {
        const std::vector<std::string_view> columnsThere = words(line->text);
        if (line->ended && columnsThere.size() >= columns && isDefault(columnsThere)) {
            links.emplace(columnsThere[name]);
        }
    }
}

} // namespace

void addDefaultRoutes(std::set<std::string>& links, std::string_view route) {
    // link destination gateway flags references uses metric mask …
    addLinks(links, route, 8, 0, [](const std::vector<std::string_view>& line) {
        return isZero(line[1]) && isInUse(line[3]) && isZero(line[7]);
    });
}

void addDefaultRoutesOfIPv6(std::set<std::string>& links, std::string_view route) {
    // destination length source length gateway metric references uses flags link
    addLinks(links, route, 10, 9, [](const std::vector<std::string_view>& line) {
        return isZero(line[0]) && isZero(line[1]) && isInUse(line[8]);
    });
}

} // namespace vantor::platform::linux
