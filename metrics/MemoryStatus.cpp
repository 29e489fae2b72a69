// SPDX-License-Identifier: MIT
#include "metrics/MemoryStatus.hpp"

#include "platform/core/Checked.hpp"
#include "platform/foundation/NSProcessInfo.hpp"
#include "settings/SharedStore.hpp"

#include <cstdint>

namespace vantor {

namespace {

using platform::checkedAdd;
using platform::checkedConvert;
using platform::checkedMultiply;
using platform::checkedSubtract;

std::int64_t pageSize() {
    std::uint64_t size = 0; // stays 0 where the host cannot tell
    platform::host_page_size(platform::mach_host_self(), &size);
    return checkedConvert<std::uint32_t>(size, "the page size does not fit in 32 bits");
}

std::int64_t physicalMemory() {
    return checkedConvert<std::int64_t>(platform::NSProcessInfo::processInfo().physicalMemory(),
                                        "the physical memory does not fit in a signed 64-bit number");
}

std::int64_t bytesOf(std::uint32_t pages, std::int64_t size) {
    return checkedMultiply<std::int64_t>(pages, size, "a memory figure overflows");
}

std::int64_t usedMemory(const platform::vm_statistics64& record, std::int64_t size) {
    constexpr std::string_view overflow = "the used memory overflows";
    const bool inactiveCountsAsFree = sharedFlag(SettingsKey::isInactiveRAMHide);
    const std::int64_t used = checkedSubtract(physicalMemory(), bytesOf(record.free_count, size), overflow);
    return inactiveCountsAsFree ? checkedSubtract(used, bytesOf(record.inactive_count, size), overflow)
                                : used;
}

} // namespace

std::optional<platform::vm_statistics64> getVMStatistics64() {
    platform::vm_statistics64 record{};
    platform::mach_msg_type_number_t count = platform::HOST_VM_INFO64_COUNT;
    const platform::kern_return_t result =
        platform::host_statistics64(platform::mach_host_self(), platform::HOST_VM_INFO64, &record, &count);
    return result == platform::KERN_SUCCESS ? std::optional(record) : std::nullopt;
}

MemoryFigures MemoryStatus::getMemoryStatus(const platform::vm_statistics64& record) {
    const std::int64_t size = pageSize();
    const std::int64_t total = physicalMemory();
    const std::int64_t used = usedMemory(record, size); // asks for the physical memory a second time
    const std::int64_t free = bytesOf(record.free_count, size);
    const std::int64_t inactive = bytesOf(record.inactive_count, size);
    const std::int64_t wire = bytesOf(record.wire_count, size);
    const std::int64_t compressor = bytesOf(record.compressor_page_count, size);
    return {
        {"total", total},
        {"used", used},
        {"free", free},
        {"active", bytesOf(record.active_count, size)},
        {"inactive", inactive},
        {"wire", wire},
        {"purgeable", bytesOf(record.purgeable_count, size)},
        {"compressor", compressor},
        {"free+inactive", checkedAdd(free, inactive, "free and inactive memory overflow")},
        {"pressure", checkedAdd(wire, compressor, "wired and compressed memory overflow")},
    };
}

} // namespace vantor
