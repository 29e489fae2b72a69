// SPDX-License-Identifier: MIT
#include "platform/linux/removal/TrashInfo.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <array>
#include <charconv>
#include <ctime>

namespace vantor::platform::linux {

namespace {

/// Undoes percent-encoding; a sign that starts none stays.
std::string percentDecoded(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        unsigned value = 0;
        const bool isEscape =
            text.front() == '%' && text.size() >= 3 &&
            std::from_chars(text.data() + 1, text.data() + 3, value, 16).ptr == text.data() + 3;
        result.push_back(isEscape ? static_cast<char>(static_cast<std::uint8_t>(value)) : text.front());
        text.remove_prefix(isEscape ? 3 : 1);
    }
    return result;
}

/// "2024-05-01T14:03:07", in local time.
std::optional<std::int64_t> parseTime(std::string_view text) {
    constexpr std::string_view form = "YYYY-MM-DDThh:mm:ss";
    constexpr std::array<std::size_t, 6> starts{0, 5, 8, 11, 14, 17};
    std::array<int, 6> fields{};
    if (text.size() != form.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const std::string_view digits = text.substr(starts[i], i == 0 ? 4 : 2);
        const std::optional<std::uint64_t> value = numberFrom(digits);
        const std::size_t end = starts[i] + digits.size();
        if (!value || (end < form.size() && text[end] != form[end])) {
            return std::nullopt;
        }
        fields[i] = static_cast<int>(*value);
    }
    std::tm local{};
    local.tm_year = fields[0] - 1900;
    local.tm_mon = fields[1] - 1;
    local.tm_mday = fields[2];
    local.tm_hour = fields[3];
    local.tm_min = fields[4];
    local.tm_sec = fields[5];
    local.tm_isdst = -1;
    const bool isDate = local.tm_mon >= 0 && local.tm_mon < 12 && local.tm_mday >= 1 && local.tm_mday <= 31 &&
                        local.tm_hour < 24 && local.tm_min < 60 && local.tm_sec <= 60;
    const std::time_t time = isDate ? std::mktime(&local) : -1;
    return time != -1 ? std::optional<std::int64_t>(time) : std::nullopt;
}

} // namespace

std::optional<TrashInfo> parseTrashInfo(std::string_view text) {
    const std::optional<Line> heading = takeLine(text);
    if (!heading || heading->text != "[Trash Info]") {
        return std::nullopt;
    }
    TrashInfo info;
    bool hasDate = false;
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view value = line->text;
        const std::string_view key = takeUntil(value, '=');
        if (key == "Path" && info.path.empty()) {
            info.path = percentDecoded(value);
        } else if (key == "DeletionDate" && !hasDate) {
            hasDate = true;
            info.trashed = parseTime(value);
        }
    }
    return info;
}

} // namespace vantor::platform::linux
