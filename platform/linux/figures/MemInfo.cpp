// SPDX-License-Identifier: MIT
#include "platform/linux/figures/MemInfo.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vantor::platform::linux {

namespace {

struct Field {
    std::string_view name;
    std::optional<std::uint64_t> MemInfo::*member;
};

/// In the kernel's order, so that each search starts where the last one ended.
constexpr std::array<Field, 19> fields{{
    {"MemTotal", &MemInfo::memTotal},
    {"MemFree", &MemInfo::memFree},
    {"MemAvailable", &MemInfo::memAvailable},
    {"Active(anon)", &MemInfo::activeAnon},
    {"Inactive(anon)", &MemInfo::inactiveAnon},
    {"Active(file)", &MemInfo::activeFile},
    {"Inactive(file)", &MemInfo::inactiveFile},
    {"Unevictable", &MemInfo::unevictable},
    {"SwapFree", &MemInfo::swapFree},
    {"Zswap", &MemInfo::zswap},
    {"Dirty", &MemInfo::dirty},
    {"Writeback", &MemInfo::writeback},
    {"SReclaimable", &MemInfo::sReclaimable},
    {"SUnreclaim", &MemInfo::sUnreclaim},
    {"KernelStack", &MemInfo::kernelStack},
    {"PageTables", &MemInfo::pageTables},
    {"SecPageTables", &MemInfo::secPageTables},
    {"Percpu", &MemInfo::percpu},
    {"Hugetlb", &MemInfo::hugetlb},
}};

/// Most of the text's sixty lines are none of ours: one bit of a name's length and first letter tells nearly
/// all of them apart.
constexpr std::uint64_t bitOf(std::string_view name) {
    const std::size_t first = static_cast<unsigned char>(name.front());
    return std::uint64_t{1} << ((first * 5 + name.size()) % 64);
}

constexpr std::uint64_t bitsOfFields() {
    std::uint64_t bits = 0;
    for (const Field& field : fields) {
        bits |= bitOf(field.name);
    }
    return bits;
}

/// "   24684084 kB": the unit is asked for, since without it the number may be cut short.
std::optional<std::uint64_t> bytesFrom(std::string_view text) {
    const std::optional<std::uint64_t> kibibytes = takeNumber(text);
    if (!kibibytes || takeWord(text) != "kB" || !takeWord(text).empty() ||
        *kibibytes > std::numeric_limits<std::uint64_t>::max() / 1024) {
        return std::nullopt;
    }
    return *kibibytes * 1024;
}

/// The place of a name among ours, looked for from where the kernel would have it.
std::optional<std::size_t> placeOf(std::string_view name, std::size_t from) {
    static constexpr std::uint64_t ours = bitsOfFields();
    if (name.empty() || (bitOf(name) & ours) == 0) {
        return std::nullopt;
    }
    for (std::size_t tried = 0; tried < fields.size(); ++tried) {
        const std::size_t at = (from + tried) % fields.size();
        if (fields[at].name == name) {
            return at;
        }
    }
    return std::nullopt;
}

} // namespace

MemInfo parseMemInfo(std::string_view text) {
    MemInfo info;
    std::size_t next = 0;
    std::size_t missing = fields.size();
    while (missing > 0) {
        const std::optional<Line> line = takeLine(text);
        if (!line) {
            break;
        }
        const std::string_view name = line->text.substr(0, line->text.find(':'));
        const std::optional<std::size_t> place = placeOf(name, next);
        if (!place || name.size() == line->text.size()) {
            continue;
        }
        std::optional<std::uint64_t>& value = info.*fields[*place].member;
        if (!value) {
            value = bytesFrom(line->text.substr(name.size() + 1));
            missing -= value ? 1 : 0;
        }
        next = *place + 1;
    }
    return info;
}

} // namespace vantor::platform::linux
