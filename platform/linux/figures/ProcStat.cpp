// SPDX-License-Identifier: MIT
#include "platform/linux/figures/ProcStat.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <array>

namespace vantor::platform::linux {

namespace {
/// Far more than any machine can count (2,800 years on 1,024 processors each), and few enough to be added up.
constexpr std::uint64_t mostTicks = std::uint64_t{1} << 53;
enum Column { user, nice, system, idle, iowait, irq, softirq, steal, columns };
} // namespace

std::optional<ProcessorTimes> parseProcStat(std::string_view text) {
    const std::optional<Line> line = takeLine(text);
    if (!line || !line->ended) {
        return std::nullopt;
    }
    std::string_view rest = line->text;
    if (takeWord(rest) != "cpu") {
        return std::nullopt;
    }
    std::array<std::uint64_t, columns> ticks{};
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const std::string_view word = takeWord(rest);
        if (word.empty() && i > idle) {
            break;
        }
        const std::optional<std::uint64_t> value = numberFrom(word);
        if (!value || *value > mostTicks) {
            return std::nullopt;
        }
        ticks[i] = *value;
    }
    return ProcessorTimes{ticks[user], ticks[system] + ticks[irq] + ticks[softirq] + ticks[steal],
                          ticks[idle] + ticks[iowait], ticks[nice]};
}

std::size_t countProcessors(std::string_view text) {
    std::size_t count = 0;
    while (const std::optional<Line> line = takeLine(text)) {
        if (!line->text.starts_with("cpu")) {
            break; // the processors' lines come first
        }
        count += line->text.size() > 3 && line->text[3] >= '0' && line->text[3] <= '9' ? 1 : 0;
    }
    return count;
}

} // namespace vantor::platform::linux
