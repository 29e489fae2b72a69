// SPDX-License-Identifier: MIT
#include "hosts/command/PageText.hpp"

#include "platform/core/PrintableText.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::hosts::command {

using Json = nlohmann::ordered_json;

std::string atRight(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

/// The kernel's average says for how much of the time some program waited.
std::string pressureText(const std::optional<platform::Pressure>& pressure, const std::string& resource) {
    if (!pressure) {
        return "";
    }
    constexpr double seconds = 300;
    const auto waited = static_cast<long>(std::lround(pressure->average300 / 100 * seconds));
    if (waited == 0) {
        return "No program waited for " + resource + " in the last five minutes.\n";
    }
    return "Programs waited for " + resource + " for about " + std::to_string(waited) +
           " s of the last five minutes.\n";
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
