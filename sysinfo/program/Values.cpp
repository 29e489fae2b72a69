// SPDX-License-Identifier: MIT
#include "sysinfo/program/Values.hpp"

#include "sysinfo/SystemValues/FileSystemFetch.hpp"
#include "sysinfo/SystemValues/Sysctl.hpp"

#include <algorithm>
#include <array>

namespace vantor::sysinfo {

using SystemValues::BrigeFetcher;
using SystemValues::Sysctl;
using SystemValues::SysctlQueryStorage;

namespace {

constexpr std::array<const char*, 12> machineKeys{
    "activecpu", "cpu64bit_capable", "cpufamily", "cpusubfamily", "cpusubtype",  "cputype",
    "machine",   "memsize",          "model",     "ncpu",         "nperflevels", "pagesize"};
constexpr std::array<const char*, 8> coreKeys{"cpusperl2",   "l1dcachesize",   "l1icachesize",
                                              "l2cachesize", "logicalcpu",     "logicalcpu_max",
                                              "physicalcpu", "physicalcpu_max"};
constexpr std::array<const char*, 9> kernelKeys{
    "bootargs",   "hostname", "osproductversion", "osproductversioncompat", "osrelease", "osreleasetype",
    "osrevision", "ostype",   "version"};

std::vector<std::string> namedKeys() {
    std::vector<std::string> keys;
    keys.reserve(machineKeys.size() + coreKeys.size() + kernelKeys.size());
    for (const char* key : machineKeys) {
        keys.push_back(std::string("hw.") + key);
    }
    for (const char* key : coreKeys) {
        keys.push_back(std::string("hw.") + key);
    }
    for (PackagesBase::UInt level = 0;
         level < std::min<PackagesBase::UInt>(Sysctl::HW::nperflevels().value_or(0), 8); ++level) {
        for (const char* key : coreKeys) {
            keys.push_back("hw.perflevel" + std::to_string(level) + "." + key);
        }
    }
    for (const char* key : kernelKeys) {
        keys.push_back(std::string("kern.") + key);
    }
    return keys;
}

bool isBelow(const std::string& key, const std::string& name) {
    return key == name || key.starts_with(name + ".");
}

void store(std::map<std::string, std::string>& found, const std::string& key) {
    if (auto value = valueOf(key)) {
        found.insert_or_assign(key, *std::move(value));
    }
}

/// `folder` ends in "/"; a point inside a file's name is a slash in its key.
void walk(std::map<std::string, std::string>& found, const std::string& folder, const std::string& key) {
    const auto entries = BrigeFetcher(folder).listEntries("");
    for (const auto& [entry, isFolder] : entries.value_or(SystemValues::FileTree::Entries{})) {
        std::string part = entry;
        std::ranges::replace(part, '.', '/');
        const std::string below = std::string(key).append(".").append(part);
        if (isFolder) {
            walk(found, std::string(folder).append(entry).append("/"), below);
        } else {
            store(found, below);
        }
    }
}

} // namespace

/// Numbers below hw. have no text of their own in the kernel's answer.
std::optional<std::string> valueOf(const std::string& key) {
    if (key.starts_with("hw.") && key != "hw.machine" && key != "hw.model") {
        const auto number = Sysctl::getInteger<std::uint64_t>(key);
        return number ? std::optional(std::to_string(*number)) : std::nullopt;
    }
    return Sysctl::getString(key);
}

std::map<std::string, std::string> tree(const std::string& name, bool replaying) {
    std::map<std::string, std::string> found;
    if (replaying) {
        for (const auto& [key, value] : SysctlQueryStorage::records.value()) {
            if (isBelow(key, name)) {
                found.emplace(key, value);
            }
        }
        return found;
    }
    for (const std::string& key : namedKeys()) {
        if (isBelow(key, name)) {
            store(found, key);
        }
    }
    std::string folder = name;
    for (char& c : folder) {
        c = c == '.' ? '/' : c == '/' ? '.' : c;
    }
    if (folder.find("..") == std::string::npos) {
        walk(found, "/proc/sys/" + folder + "/", name);
    }
    if (found.empty()) {
        store(found, name);
    }
    return found;
}

} // namespace vantor::sysinfo
