// SPDX-License-Identifier: MIT
#include "platform/linux/figures/ZramStat.hpp"

#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

std::optional<std::uint64_t> parseZramMemoryUsed(std::string_view text) {
    const std::optional<Line> line = takeLine(text);
    if (!line || !line->ended) {
        return std::nullopt;
    }
    std::string_view rest = line->text;
    const std::optional<std::uint64_t> original = takeNumber(rest);
    const std::optional<std::uint64_t> compressed = takeNumber(rest);
    const std::optional<std::uint64_t> used = takeNumber(rest);
    return original && compressed ? used : std::nullopt;
}

} // namespace vantor::platform::linux
