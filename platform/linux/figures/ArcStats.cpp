// SPDX-License-Identifier: MIT
#include "platform/linux/figures/ArcStats.hpp"

#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

std::optional<ArcStats> parseArcStats(std::string_view text) {
    std::optional<std::uint64_t> size;
    std::optional<std::uint64_t> minimum;
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view rest = line->text;
        const std::string_view name = takeWord(rest);
        if (!line->ended || (name != "size" && name != "c_min")) {
            continue;
        }
        (void)takeWord(rest); // the type
        (name == "size" ? size : minimum) = takeNumber(rest);
    }
    return size && minimum ? std::optional(ArcStats{*size, *minimum}) : std::nullopt;
}

} // namespace vantor::platform::linux
