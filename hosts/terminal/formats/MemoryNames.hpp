// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace vantor::hosts::terminal {

/// A figure of the memory record and what programs know it by.
struct MemoryName {
    std::string_view key;  ///< in the record
    std::string_view json; ///< in the JSON report
    std::string_view metric;
    std::string_view help;
};

inline constexpr std::array<MemoryName, 10> memoryNames{{
    {"total", "total", "vantor_ram_total_bytes", "Installed memory."},
    {"used", "used", "vantor_ram_used_bytes", "Memory in use, as the widget counts it."},
    {"free", "free", "vantor_ram_free_bytes", "Memory that programs can have at once."},
    {"active", "active", "vantor_ram_active_bytes", "Memory of programs that is in use."},
    {"inactive", "inactive", "vantor_ram_inactive_bytes", "Memory of programs that could be paged out."},
    {"wire", "wired", "vantor_ram_wired_bytes", "Memory that the kernel cannot give back."},
    {"purgeable", "purgeable", "vantor_ram_purgeable_bytes", "Caches that can be dropped."},
    {"compressor", "compressor", "vantor_ram_compressor_bytes", "Memory that holds compressed pages."},
    {"free+inactive", "freeAndInactive", "vantor_ram_free_and_inactive_bytes", "Free and inactive memory."},
    {"pressure", "pressure", "vantor_ram_pressure_bytes", "Wired and compressed memory."},
}};

} // namespace vantor::hosts::terminal
