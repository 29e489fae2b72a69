// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/Recording.hpp"

#include "sysinfo/SystemValues/SysctlQuery.hpp"

namespace vantor::SystemValues {

Recording Recording::ofThisMachine() {
    Recording recording;
    recording.records = SysctlQueryStorage::records;
    for (const char* part : {"hw", "kern", "machdep", "vm.swap_total"}) {
        for (const std::string& key : querySysctlKeys(part)) {
            if (recording.records.contains(key)) {
                continue; // what was shown is what is recorded, also of a figure that moves
            }
            if (auto value = querySysctlDescription(key)) {
                recording.records.emplace(key, *std::move(value));
            }
        }
    }
    (void)CPUID::brandString();
    (void)CPUID::standard_family();
    (void)CPUID::hypervisor();
    recording.queries = CPUID::Registers::queryCache;
    return recording;
}

} // namespace vantor::SystemValues
