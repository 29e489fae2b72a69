// SPDX-License-Identifier: MIT
#include "platform/linux/figures/MemInfo.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
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

/// A number below 256, another one for each of our names: it tells nearly all of the text's sixty lines from
/// ours at one look. The name has two characters at least.
constexpr std::size_t markOf(std::string_view name) {
    const auto character = [name](std::size_t at) {
        return std::size_t{static_cast<unsigned char>(name[at])};
    };
    return (character(0) + 7 * character(name.size() - 2) + name.size()) % 256;
}

/// The place of a name among ours by its mark; past the end where none has it.
constexpr std::array<std::uint8_t, 256> placesByMark() {
    std::array<std::uint8_t, 256> places{};
    places.fill(fields.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        places.at(markOf(fields.at(i).name)) = static_cast<std::uint8_t>(i);
    }
    return places;
}
constexpr std::array<std::uint8_t, 256> places = placesByMark();
static_assert(std::ranges::count(places, fields.size()) == 256 - fields.size(), "two names have one mark");

/// "   24684084 kB": the unit is asked for, since without it the number may be cut short.
std::optional<std::uint64_t> bytesFrom(std::string_view text) {
    const std::optional<std::uint64_t> kibibytes = takeNumber(text);
    if (!kibibytes || takeWord(text) != "kB" || !takeWord(text).empty() ||
        *kibibytes > std::numeric_limits<std::uint64_t>::max() / 1024) {
        return std::nullopt;
    }
    return *kibibytes * 1024;
}

std::optional<std::size_t> placeOf(std::string_view name) {
    const std::size_t place = name.size() < 2 ? fields.size() : places[markOf(name)];
    return place < fields.size() && fields[place].name == name ? std::optional(place) : std::nullopt;
}

} // namespace

MemInfo parseMemInfo(std::string_view text) {
    MemInfo info;
    std::size_t missing = fields.size();
    while (missing > 0) {
        const std::optional<Line> line = takeLine(text);
        if (!line) {
            break;
        }
        const std::string_view name = line->text.substr(0, line->text.find(':'));
        const std::optional<std::size_t> place = placeOf(name);
        if (!place || name.size() == line->text.size()) {
            continue;
        }
        std::optional<std::uint64_t>& value = info.*fields[*place].member;
        if (!value) {
            value = bytesFrom(line->text.substr(name.size() + 1));
            missing -= value ? 1 : 0;
        }
    }
    return info;
}

} // namespace vantor::platform::linux
