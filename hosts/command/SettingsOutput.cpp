// SPDX-License-Identifier: MIT
#include "hosts/command/SettingsOutput.hpp"

#include "hosts/command/CommandLine.hpp"
#include "platform/foundation/NSUserDefaults.hpp"

#include <nlohmann/json.hpp>

namespace vantor::hosts::command {

namespace {

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text + "  ";
}

} // namespace

std::string settingLine(const SettingState& state) {
    constexpr std::size_t keyWidth = 25, valueWidth = 9;
    return padded(std::string(state.setting->key), keyWidth) + padded(state.text(), valueWidth) +
           (state.isStored ? "set\n" : "default\n");
}

std::string settingJson(const SettingState& state) {
    nlohmann::ordered_json json{{"key", state.setting->key}};
    if (const bool* const flag = std::get_if<bool>(&state.value)) {
        json["value"] = *flag;
    } else if (const double* const seconds = std::get_if<double>(&state.value)) {
        json["value"] = *seconds; // what is not finite is written as null
    } else {
        json["value"] = state.text();
    }
    json["stored"] = state.isStored;
    return json.dump();
}

std::string settingDescription(const Setting& setting) {
    std::string text(setting.key);
    text.append("\n  ").append(setting.effect);
    text.append("\n  Takes ").append(setting.takes).append("; where nothing is set it is ");
    text.append(setting.usual).append(".\n  ").append(setting.applies).append("\n");
    return text;
}

bool complainAboutStore(const std::vector<SettingState>& states) {
    if (const std::optional<std::string> problem = platform::suiteProblem()) {
        complain(*problem + ". The usual values hold.");
        return false;
    }
    for (const SettingState& state : states) {
        if (!state.problem.empty()) {
            complain(std::string(state.setting->key) + ": " + state.problem);
        }
    }
    return true;
}

} // namespace vantor::hosts::command
