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

bool hasWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        if (takeUntil(words, ' ') == word) {
            return true;
        }
    }
    return false;
}

} // namespace vantor::platform::linux::sysctl
