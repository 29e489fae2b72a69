// SPDX-License-Identifier: MIT
#include "logging/Logga.hpp"

#include "platform/core/StandardOutput.hpp"
#include "platform/foundation/DateText.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <cstdio>

namespace vantor {

namespace {

char letterOf(std::int64_t level) {
    constexpr std::string_view letters = "DIWE";
    return level <= 4 ? letters[static_cast<std::size_t>(level - 1)] : '*';
}

} // namespace

std::string Logga::formatLine(std::string_view message, std::int64_t level,
                              std::optional<std::string_view> tag) {
    if (level < 1) {
        return std::string(message);
    }
    const auto now = std::chrono::system_clock::now();
    const auto local = now + platform::secondsFromGMT(now);
    std::string line = "[" + platform::dateDescription(local) + "][";
    line += letterOf(level);
    line += platform::isMainThread() ? "|MAIN]" : "|BKG]";
    if (tag) {
        line.append(" (").append(*tag).append(") ");
    } else {
        line += ' ';
    }
    return line.append(message);
}

void Logga::debugText(std::string_view text) {
    const std::string line = formatLine(text, 1) + '\n';
    // One call for the whole line, so that lines of different threads do not mix.
    std::fwrite(line.data(), 1, line.size(), platform::standardOutput());
    std::fflush(platform::standardOutput());
}

} // namespace vantor
