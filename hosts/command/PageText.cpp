// SPDX-License-Identifier: MIT
#include "hosts/command/PageText.hpp"

#include "pages/PageWords.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>

namespace vantor::hosts::command {

using Json = nlohmann::ordered_json;

std::string atRight(const std::string& text, std::size_t width) {
    const auto characters = static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; })); // UTF-8
    return std::string(width - std::min(width, characters), ' ') + text;
}

std::string words(std::string_view key) {
    return platform::NSLocalizedString(key);
}

std::string words(std::string_view key, std::string_view name, std::string_view value) {
    return platform::textWithValue(words(key), name, value);
}

std::string percentText(double percent, int digits) {
    return decimalWords(percent, digits) + '%';
}

Json pressureJson(const std::optional<platform::Pressure>& pressure) {
    return pressure ? Json{{"average10", pressure->average10},
                           {"average60", pressure->average60},
                           {"average300", pressure->average300},
                           {"seconds", static_cast<double>(pressure->microseconds) / 1e6}}
                    : Json();
}

Json processesJson(const std::vector<platform::ProcessIdentity>& processes) {
    Json list = Json::array();
    for (const platform::ProcessIdentity& process : processes) {
        list.push_back({{"pid", process.number}, {"name", platform::printableText(process.name)}});
    }
    return list;
}

} // namespace vantor::hosts::command
