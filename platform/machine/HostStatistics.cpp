// SPDX-License-Identifier: MIT
#include "platform/machine/HostStatistics.hpp"

#include "platform/machine/Machine.hpp"

#include <cstring>

namespace vantor::platform {

host_t mach_host_self() {
    return 1;
}

kern_return_t host_page_size(host_t /*host*/, std::uint64_t* size) {
    return currentMachine().hostPageSize(*size);
}

kern_return_t host_statistics(host_t /*host*/, host_flavor_t flavor, std::uint32_t* record,
                              mach_msg_type_number_t* count) {
    if (flavor != HOST_CPU_LOAD_INFO || *count < HOST_CPU_LOAD_INFO_COUNT) {
        return KERN_INVALID_ARGUMENT;
    }
    host_cpu_load_info load{};
    const kern_return_t result = currentMachine().hostCpuLoad(load);
    if (result == KERN_SUCCESS) {
        std::memcpy(record, &load, sizeof load);
        *count = HOST_CPU_LOAD_INFO_COUNT;
    }
    return result;
}

kern_return_t host_statistics64(host_t /*host*/, host_flavor_t flavor, vm_statistics64* record,
                                mach_msg_type_number_t* count) {
    if (flavor != HOST_VM_INFO64 || *count < HOST_VM_INFO64_COUNT) {
        return KERN_INVALID_ARGUMENT;
    }
    const kern_return_t result = currentMachine().hostVirtualMemory(*record);
    if (result == KERN_SUCCESS) {
        *count = HOST_VM_INFO64_COUNT;
    }
    return result;
}

} // namespace vantor::platform
