// SPDX-License-Identifier: MIT
#include "sysinfo/program/SysctlCommand.hpp"

#include "platform/core/PrintableText.hpp"
#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/SystemValues/SysctlQuery.hpp"
#include "sysinfo/program/Json.hpp"
#include "sysinfo/program/Output.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace vantor::sysinfo {

namespace {

using Values = std::vector<std::pair<std::string, std::optional<std::string>>>;

/// A value as one line of a terminal. Tabs separate the numbers of some kernel values.
std::string oneLine(std::string value) {
    std::ranges::replace(value, '\t', ' ');
    return platform::printableText(value, 4096);
}

/// A number where the text is one and nothing else. What the platform has as text stays one: a version "12"
/// has a sister "12.5".
Json jsonOf(const std::string& key, const std::optional<std::string>& value) {
    if (!value) {
        return nullptr;
    }
    const bool isText = key.starts_with("kern.") && key != "kern.uptime";
    const auto whole = PackagesBase::parseInteger<std::int64_t>(*value);
    const auto count = PackagesBase::parseInteger<std::uint64_t>(*value);
    if (!isText && count && std::to_string(*count) == *value) {
        return *count;
    }
    return !isText && whole && std::to_string(*whole) == *value ? Json(*whole) : Json(*value);
}

Values valuesOf(const SysctlOptions& options) {
    Values values;
    for (const std::string& key : options.keys) {
        values.emplace_back(key, SystemValues::querySysctlDescription(key));
        if (!values.back().second) {
            complain("no value: " + platform::printableText(key));
        }
    }
    if (!options.tree.empty()) {
        for (const std::string& key : SystemValues::querySysctlKeys(options.tree)) {
            if (auto value = SystemValues::querySysctlDescription(key)) {
                values.emplace_back(key, std::move(value));
            }
        }
        if (values.size() == options.keys.size()) {
            values.emplace_back(options.tree, std::nullopt);
            complain("nothing at or below: " + platform::printableText(options.tree));
        }
    }
    return values;
}

} // namespace

CLI::App& declareSysctl(CLI::App& app, SysctlOptions& options) {
    CLI::App& command = *app.add_subcommand("sysctl", "Print kernel values by name");
    auto* const names = command.add_option("NAME", options.keys, "Keys such as hw.memsize or vm.swappiness");
    auto* const below = command.add_option("--tree", options.tree, "Everything at or below a name");
    below->type_name("NAME");
    names->type_name("");
    command.callback([names, &options] {
        if (names->count() == 0 && options.tree.empty()) {
            throw CLI::RequiredError("sysctl: a NAME or --tree");
        }
    });
    return command;
}

int showSysctl(const SysctlOptions& options, bool json) {
    const Values values = valuesOf(options);
    Json object = Json::object();
    for (const auto& [key, value] : values) {
        if (json) {
            object[key] = jsonOf(key, value);
        } else if (value) {
            put(platform::printableText(key) + " = " + oneLine(*value) + "\n");
        }
    }
    if (json) {
        put(written(object));
    }
    return std::ranges::any_of(values, [](const auto& each) { return !each.second; }) ? 1 : 0;
}

} // namespace vantor::sysinfo
