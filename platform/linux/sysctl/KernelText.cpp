// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/KernelText.hpp"

#include <algorithm>
#include <charconv>
#include <limits>

namespace vantor::platform::linux::sysctl {

namespace {

constexpr unsigned mostProcessors = 1U << 16U; // the kernel's own limit is 8192

/// Cuts the text up to a separator off the front of `rest`.
std::string_view cut(std::string_view& rest, char separator) {
    const std::size_t at = std::min(rest.find(separator), rest.size());
    const std::string_view piece = rest.substr(0, at);
    rest.remove_prefix(std::min(at + 1, rest.size()));
    return piece;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t from = text.find_first_not_of(" \t\r");
    if (from == std::string_view::npos) {
        return {};
    }
    return text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

std::string unquoted(std::string_view value) {
    std::string result;
    char quote = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c == '\\' && quote != '\'' && i + 1 < value.size()) {
            result += value[++i];
        } else if (c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == '"' || c == '\'')) {
            quote = c;
        } else {
            result += c;
        }
    }
    return result;
}

} // namespace

std::optional<std::uint64_t> parseNumber(std::string_view text) {
    std::uint64_t number = 0;
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

std::optional<CpuList> parseCpuList(std::string_view text) {
    CpuList result;
    while (!text.empty()) {
        std::string_view range = cut(text, ',');
        const auto first = parseNumber(cut(range, '-'));
        const auto last = range.empty() ? first : parseNumber(range);
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
    const auto count = parseNumber(unit == 1 ? text : text.substr(0, text.size() - 1));
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return count && *count <= most / unit ? std::optional(*count * unit) : std::nullopt;
}

std::optional<std::uint64_t> parseMeminfo(std::string_view text, std::string_view name) {
    while (!text.empty()) {
        std::string_view rest = cut(text, '\n');
        if (cut(rest, ':') == name) {
            rest = trimmed(rest);
            const auto count = parseNumber(cut(rest, ' '));
            const bool kibibytes = trimmed(rest) == "kB";
            return count && kibibytes && *count < (std::uint64_t{1} << 53U) ? std::optional(*count * 1024)
                                                                            : std::nullopt;
        }
    }
    return std::nullopt;
}

std::vector<CpuinfoBlock> parseCpuinfo(std::string_view text) {
    std::vector<CpuinfoBlock> blocks;
    bool inside = false;
    while (!text.empty()) {
        std::string_view line = cut(text, '\n');
        if (trimmed(line).empty()) {
            inside = false;
            continue;
        }
        if (!inside) {
            blocks.emplace_back();
            inside = true;
        }
        const std::string_view name = trimmed(cut(line, ':'));
        blocks.back().insert_or_assign(std::string(name), std::string(trimmed(line)));
    }
    return blocks;
}

std::optional<std::string> parseOsRelease(std::string_view text, std::string_view name) {
    std::optional<std::string> result;
    while (!text.empty()) {
        std::string_view line = trimmed(cut(text, '\n'));
        if (cut(line, '=') == name) {
            result = unquoted(line);
        }
    }
    return result;
}

bool hasWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        if (cut(words, ' ') == word) {
            return true;
        }
    }
    return false;
}

} // namespace vantor::platform::linux::sysctl
