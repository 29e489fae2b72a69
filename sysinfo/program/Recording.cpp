// SPDX-License-Identifier: MIT
#include "sysinfo/program/Recording.hpp"

#include "sysinfo/SystemValues/CPUID.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"
#include "sysinfo/program/Json.hpp"
#include "sysinfo/program/Values.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace vantor::sysinfo {

using SystemValues::CPUID;
using SystemValues::SysctlQueryStorage;
using Registers = CPUID::Registers;

namespace {

constexpr int formatVersion = 1;

/// What the recording does not hold, the recorded machine did not tell.
struct NoSysctl final : platform::SysctlSource {
    platform::SysctlAnswer read(std::string_view /*key*/) override { return {}; }
};

struct RecordedDevice final : platform::MTLDeviceSource {
    std::optional<platform::MTLDevice> device;
    bool asked = false;
    std::optional<platform::MTLDevice> systemDefaultDevice() override { return device; }
};

RecordedDevice& recordedDevice() {
    static RecordedDevice device;
    return device;
}

std::vector<Registers> registersOf(const Json& list) {
    std::vector<Registers> result;
    for (const Json& each : list) {
        if (const auto registers = Registers::decoded(each.get<Registers::Encoded>())) {
            result.push_back(*registers);
        }
    }
    return result;
}

std::optional<platform::MTLDevice> deviceOf(const Json& json) {
    if (json.is_null()) {
        return std::nullopt;
    }
    return platform::MTLDevice{json.at("name").get<std::string>(), json.at("vram").get<std::uint64_t>(), 0,
                               json.at("hasUnifiedMemory").get<bool>()};
}

} // namespace

std::string recorded(const AskedGpu& gpu) {
    for (const char* part : {"hw", "kern"}) {
        (void)tree(part, false); // for a later replay of another command
    }
    (void)CPUID::brandString();
    (void)CPUID::standard_family();
    Json cpuid = Json::array();
    for (const Registers& each : Registers::queryCache.value()) {
        cpuid.push_back(each.encoded());
    }
    Json json{{"vantor-sysinfo", formatVersion},
              {"records", SysctlQueryStorage::records.value()},
              {"cpuid", std::move(cpuid)}};
    if (gpu) {
        json["gpu"] = jsonOf(*gpu);
    }
    return written(json);
}

bool Replay::start(std::string_view recording, std::string& why) {
    static NoSysctl noSysctl;
    try {
        const Json json = Json::parse(recording);
        if (json.at("vantor-sysinfo") != formatVersion) {
            why = "made by another version of this program";
            return false;
        }
        auto records = json.at("records").get<SysctlQueryStorage::Records>();
        auto registers = registersOf(json.at("cpuid"));
        recordedDevice().asked = json.contains("gpu");
        recordedDevice().device = deviceOf(json.value("gpu", Json()));
        SysctlQueryStorage::records = std::move(records);
        Registers::queryCache = std::move(registers);
    } catch (const Json::exception& error) {
        why = "not a recording of this program";
        return false;
    }
    static const platform::Current<platform::SysctlSource> sysctlScope(noSysctl);
    static const platform::Current<platform::MTLDeviceSource> deviceScope(recordedDevice());
    SysctlQueryStorage::recoverEveryQueryFromStorage = true;
    return true;
}

bool Replay::hasGpu() {
    return recordedDevice().asked;
}

bool Replay::hasProcessor() {
    const std::vector<Registers> queries = Registers::queryCache;
    const auto holds = [&](std::uint32_t leaf) {
        return std::ranges::any_of(
            queries, [leaf](const Registers& each) { return each.queryLevel1 == leaf && !each.queryLevel2; });
    };
    return holds(1) && holds(0x80000002) && holds(0x80000003) && holds(0x80000004);
}

std::optional<std::string> fileContent(const std::string& path, std::string& why) {
    constexpr std::uintmax_t longest = std::uintmax_t{16} << 20U;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        why = error ? error.message() : "not a plain file";
        return std::nullopt;
    }
    if (std::filesystem::file_size(path, error) > longest || error) {
        why = "too large";
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file) {
        why = "cannot be read";
        return std::nullopt;
    }
    return content;
}

std::optional<std::string> writeFile(const std::string& path, std::string_view content) {
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    return file ? std::nullopt : std::optional(std::generic_category().message(errno == 0 ? EIO : errno));
}

} // namespace vantor::sysinfo
