// SPDX-License-Identifier: MIT
#include "platform/linux/MemInfo.hpp"

#include "platform/linux/TextScan.hpp"

#include <array>
#include <cstddef>
#include <limits>

namespace vantor::platform::linux_machine {

namespace {

struct Field {
    std::string_view name;
    std::optional<std::uint64_t> MemInfo::*member;
};

/// In the kernel's order, so that each search starts where the last one ended.
constexpr std::array<Field, 16> fields{{
    {"MemTotal", &MemInfo::memTotal},
    {"MemFree", &MemInfo::memFree},
    {"MemAvailable", &MemInfo::memAvailable},
    {"Active(anon)", &MemInfo::activeAnon},
    {"Inactive(anon)", &MemInfo::inactiveAnon},
    {"Active(file)", &MemInfo::activeFile},
    {"Inactive(file)", &MemInfo::inactiveFile},
    {"Unevictable", &MemInfo::unevictable},
    {"Zswap", &MemInfo::zswap},
    {"Dirty", &MemInfo::dirty},
    {"Writeback", &MemInfo::writeback},
    {"SReclaimable", &MemInfo::sReclaimable},
    {"SUnreclaim", &MemInfo::sUnreclaim},
    {"KernelStack", &MemInfo::kernelStack},
    {"PageTables", &MemInfo::pageTables},
    {"Percpu", &MemInfo::percpu},
}};

/// "   24684084 kB": the unit is asked for, since without it the number may be cut short.
std::optional<std::uint64_t> bytesFrom(std::string_view text) {
    const std::optional<std::uint64_t> kibibytes = takeNumber(text);
    if (!kibibytes || takeWord(text) != "kB" || !takeWord(text).empty() ||
        *kibibytes > std::numeric_limits<std::uint64_t>::max() / 1024) {
        return std::nullopt;
    }
    return *kibibytes * 1024;
}

} // namespace

MemInfo parseMemInfo(std::string_view text) {
    MemInfo info;
    std::size_t next = 0;
    while (const std::optional<Line> line = takeLine(text)) {
        const std::size_t colon = line->text.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const std::string_view name = line->text.substr(0, colon);
        for (std::size_t tried = 0; tried < fields.size(); ++tried) {
            const std::size_t at = (next + tried) % fields.size();
            if (fields[at].name == name) {
                std::optional<std::uint64_t>& value = info.*fields[at].member;
                if (!value) {
                    value = bytesFrom(line->text.substr(colon + 1));
                }
                next = at + 1;
                break;
            }
        }
    }
    return info;
}

} // namespace vantor::platform::linux_machine
