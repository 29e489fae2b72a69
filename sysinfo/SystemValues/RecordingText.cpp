// SPDX-License-Identifier: MIT
// A recording as JSON:
//
//     {"vantor-sysinfo": 1,                                  the version of this form
//      "records": {"hw.ncpu": "8", …},                       values as texts
//      "cpuid": [{"eax": 1, …, "queryLevel1": 1}, …],
//      "gpu": {"name": "…", "vram": 0, "hasUnifiedMemory": true}}   null: none; left out: nobody asked
#include "sysinfo/SystemValues/Recording.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vantor::SystemValues {

namespace {

using Json = nlohmann::ordered_json;

constexpr int formVersion = 1;

Json deviceJson(const Recording::Device& device) {
    if (!device) {
        return nullptr;
    }
    return {{"name", device->name},
            {"vram", std::max(device->maxBufferLength, device->currentAllocatedSize)},
            {"hasUnifiedMemory", device->hasUnifiedMemory.value_or(true)}};
}

Recording::Device deviceFrom(const Json& json) {
    if (json.is_null()) {
        return std::nullopt;
    }
    return platform::MTLDevice{json.at("name").get<std::string>(), json.at("vram").get<std::uint64_t>(), 0,
                               json.at("hasUnifiedMemory").get<bool>()};
}

Recording recordingFrom(const Json& json) {
    Recording recording;
    recording.records = json.at("records").get<SysctlQueryStorage::Records>();
    for (const Json& each : json.at("cpuid")) {
        if (const auto registers = CPUID::Registers::decoded(each.get<CPUID::Registers::Encoded>())) {
            recording.queries.push_back(*registers);
        }
    }
    if (json.contains("gpu")) {
        recording.device = deviceFrom(json.at("gpu"));
    }
    return recording;
}

} // namespace

std::string Recording::text() const {
    Json cpuid = Json::array();
    for (const CPUID::Registers& each : queries) {
        cpuid.push_back(each.encoded());
    }
    Json json{{"vantor-sysinfo", formVersion}, {"records", records}, {"cpuid", std::move(cpuid)}};
    if (device) {
        json["gpu"] = deviceJson(*device);
    }
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<Recording> Recording::fromText(std::string_view text, std::string& why) try {
    const Json json = Json::parse(text);
    if (json.at("vantor-sysinfo") == formVersion) {
        return recordingFrom(json);
    }
    why = "a recording of another version";
    return std::nullopt;
} catch (const Json::exception&) {
    why = "not a recording";
    return std::nullopt;
}

} // namespace vantor::SystemValues
