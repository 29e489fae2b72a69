// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/KernelText.hpp"

#include "platform/linux/kernel/Assignments.hpp"
#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <limits>

namespace vantor::platform::linux::sysctl {

namespace {

constexpr unsigned mostProcessors = 1U << 16U; // the kernel's own limit is 8192

std::string_view trimmed(std::string_view text) {
    const std::size_t from = text.find_first_not_of(" \t\r");
    if (from == std::string_view::npos) {
        return {};
    }
    return text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

} // namespace

std::optional<CpuList> parseCpuList(std::string_view text) {
    CpuList result;
    while (!text.empty()) {
        std::string_view range = takeUntil(text, ',');
        const auto first = numberFrom(takeUntil(range, '-'));
        const auto last = range.empty() ? first : numberFrom(range);
        if (!first || !last || *first > *last || *last >= mostProcessors || result.size() > mostProcessors) {
            return std::nullopt;
        }
        for (std::uint64_t number = *first; number <= *last; ++number) {
            result.push_back(static_cast<unsigned>(number));
        }
    }
    std::ranges::sort(result);
    const auto repeated = std::ranges::unique(result);
    result.erase(repeated.begin(), repeated.end());
    return result;
}

std::optional<std::uint64_t> parseCacheSize(std::string_view text) {
    std::uint64_t unit = 1;
    if (!text.empty()) {
        unit = text.back() == 'K' ? 1U << 10U : text.back() == 'M' ? 1U << 20U : 1;
    }
    const auto count = numberFrom(unit == 1 ? text : text.substr(0, text.size() - 1));
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return count && *count <= most / unit ? std::optional(*count * unit) : std::nullopt;
}

std::vector<CpuinfoBlock> parseCpuinfo(std::string_view text) {
    std::vector<CpuinfoBlock> blocks;
    bool inside = false;
    while (!text.empty()) {
        std::string_view line = takeUntil(text, '\n');
        if (trimmed(line).empty()) {
            inside = false;
            continue;
        }
        if (!inside) {
            blocks.emplace_back();
            inside = true;
        }
        const std::string_view name = trimmed(takeUntil(line, ':'));
        blocks.back().insert_or_assign(std::string(name), std::string(trimmed(line)));
    }
    return blocks;
}

std::optional<std::uint64_t> parseMegahertz(std::string_view text) {
    if (text.ends_with("MHz")) {
        text.remove_suffix(3);
    }
    const auto whole = numberFrom(takeUntil(text, '.'));
    std::string millionths(text.substr(0, 6));
    millionths.resize(6, '0');
    const auto part = numberFrom(millionths);
    const bool known = whole && part && *whole < 1'000'000;
    return known ? std::optional(*whole * 1'000'000 + *part) : std::nullopt;
}

std::optional<std::uint64_t> parseSwaps(std::string_view text) {
    if (!takeUntil(text, '\n').starts_with("Filename")) {
        return std::nullopt;
    }
    std::uint64_t kibibytes = 0;
    while (!text.empty()) {
        std::string_view line = takeUntil(text, '\n');
        (void)takeWord(line); // blanks inside a file's name are written as \040
        (void)takeWord(line);
        kibibytes += takeNumber(line).value_or(0);
    }
    return kibibytes * 1024;
}

std::optional<std::string> parseOsRelease(std::string_view text, std::string_view name) {
    std::optional<std::string> result;
    while (!text.empty()) {
        std::string_view line = trimmed(takeUntil(text, '\n'));
        if (takeUntil(line, '=') == name) {
            result = unquoted(line);
        }
    }
    return result;
}

std::string_view fieldOf(const CpuinfoBlock& block, std::string_view name) {
    const auto found = block.find(name);
    return found != block.end() ? found->second : std::string_view();
}

std::string_view firstField(const std::vector<CpuinfoBlock>& cpuinfo, std::string_view name) {
    for (const CpuinfoBlock& block : cpuinfo) {
        if (const std::string_view value = fieldOf(block, name); !value.empty()) {
            return value;
        }
    }
    return {};
}

std::optional<std::uint64_t> hexadecimal(std::string_view text) {
    if (!text.starts_with("0x") || text.size() < 3 || text.size() > 10) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const char c : text.substr(2)) {
        const std::size_t digit = std::string_view("0123456789abcdef").find(c);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        number = number * 16 + digit;
    }
    return number;
}

bool hasWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        if (takeUntil(words, ' ') == word) {
            return true;
        }
    }
    return false;
}

} // namespace vantor::platform::linux::sysctl
