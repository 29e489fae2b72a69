// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

/// The kernel's page and processor counters under the names of the Mach host interface.
namespace vantor::platform {

using kern_return_t = int;
using host_t = unsigned;
using host_flavor_t = int;
using mach_msg_type_number_t = std::uint32_t;

inline constexpr kern_return_t KERN_SUCCESS = 0;
inline constexpr kern_return_t KERN_INVALID_ARGUMENT = 4;
inline constexpr kern_return_t KERN_FAILURE = 5;

inline constexpr host_flavor_t HOST_CPU_LOAD_INFO = 3;
inline constexpr host_flavor_t HOST_VM_INFO64 = 4;
inline constexpr mach_msg_type_number_t HOST_CPU_LOAD_INFO_COUNT = 4;
inline constexpr mach_msg_type_number_t HOST_VM_INFO64_COUNT = 38;

/// The virtual-memory record: 38 words, of which six page counts are used. `free_count` includes what the
/// kernel gives back at once.
struct vm_statistics64 {
    std::uint32_t free_count;
    std::uint32_t active_count;
    std::uint32_t inactive_count;
    std::uint32_t wire_count;
    std::array<std::uint32_t, 18> words4to21;
    std::uint32_t purgeable_count;
    std::array<std::uint32_t, 9> words23to31;
    std::uint32_t compressor_page_count;
    std::array<std::uint32_t, 5> words33to37;
};
static_assert(sizeof(vm_statistics64) == HOST_VM_INFO64_COUNT * sizeof(std::uint32_t));

/// The processor's ticks since boot, in this order.
struct host_cpu_load_info {
    std::uint32_t user;
    std::uint32_t system;
    std::uint32_t idle;
    std::uint32_t nice;
};
static_assert(sizeof(host_cpu_load_info) == HOST_CPU_LOAD_INFO_COUNT * sizeof(std::uint32_t));

/// The host, to be handed to the calls below.
[[nodiscard]] host_t mach_host_self();

/// The size of a page in bytes.
kern_return_t host_page_size(host_t host, std::uint64_t* size);

/// Fills a record of words; `count` is its length and receives what was filled. Anything but KERN_SUCCESS
/// leaves the record as it was.
kern_return_t host_statistics(host_t host, host_flavor_t flavor, std::uint32_t* record,
                              mach_msg_type_number_t* count);
kern_return_t host_statistics64(host_t host, host_flavor_t flavor, vm_statistics64* record,
                                mach_msg_type_number_t* count);

} // namespace vantor::platform
