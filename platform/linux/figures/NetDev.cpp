// SPDX-License-Identifier: MIT
#include "platform/linux/figures/NetDev.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestName = 15; // IFNAMSIZ with its NUL is 16
constexpr int columnsBetween = 7;       // packets errs drop fifo frame compressed multicast

bool noNameHas(char sign) {
    return sign == '/' || sign == '\0' || isBlank(sign);
}

std::optional<LinkCounters> parseLink(std::string_view line) {
    skipBlanks(line);
    const std::size_t colon = line.rfind(':', longestName); // old kernels allow a colon in the name
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    LinkCounters link;
    link.name = line.substr(0, colon);
    if (link.name.empty() || link.name == "." || link.name == ".." ||
        std::ranges::any_of(link.name, noNameHas)) {
        return std::nullopt;
    }
    std::string_view rest = line.substr(colon + 1);
    const std::optional<std::uint64_t> received = takeNumber(rest);
    for (int i = 0; i < columnsBetween; ++i) {
        if (takeWord(rest).empty()) {
            return std::nullopt;
        }
    }
    const std::optional<std::uint64_t> sent = takeNumber(rest);
    if (!received || !sent) {
        return std::nullopt;
    }
    link.receivedBytes = *received;
    link.sentBytes = *sent;
    return link;
}

} // namespace

std::optional<LinkCounters> takeLink(std::string_view& text) {
    while (const std::optional<Line> line = takeLine(text)) {
        if (line->ended) {
            if (const std::optional<LinkCounters> link = parseLink(line->text)) {
                return link;
            }
        }
    }
    return std::nullopt;
}

bool isEmptyLinkList(std::string_view text) {
    const std::optional<Line> first = takeLine(text);
    const std::optional<Line> second = takeLine(text);
    return first && first->text.starts_with("Inter-|") && second && second->text.starts_with(" face |") &&
           second->ended && text.empty();
}

} // namespace vantor::platform::linux
