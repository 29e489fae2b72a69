// SPDX-License-Identifier: MIT
#include "metrics/NetworkStatus.hpp"

#include "platform/core/FatalStop.hpp"
#include "platform/machine/InterfaceAddress.hpp"

#include <string_view>

namespace vantor {

namespace {

void add(std::uint64_t& sum, std::uint32_t octets) {
    sum = platform::checkedAdd<std::uint64_t>(sum, octets, "the sum of the interface counters overflows");
}

void count(const platform::ifaddrs& entry, DataUsageInfo& usage) {
    if (entry.ifa_name == nullptr) {
        platform::fatalStop("a network interface has no name");
    }
    const std::string_view name(entry.ifa_name);
    if (entry.ifa_addr == nullptr) {
        platform::fatalStop("a network interface entry has no address");
    }
    if (entry.ifa_addr->sa_family != platform::AF_LINK) {
        return;
    }
    if (name.starts_with("en")) {
        add(usage.wifiReceived, entry.ifa_data->ifi_ibytes);
        add(usage.wifiSent, entry.ifa_data->ifi_obytes);
    } else if (name.starts_with("pdp_ip")) {
        add(usage.wirelessWanDataReceived, entry.ifa_data->ifi_ibytes);
        add(usage.wirelessWanDataSent, entry.ifa_data->ifi_obytes);
    }
}

} // namespace

DataUsageInfo NetworkStatus::getDataUsage() {
    platform::ifaddrs* list = nullptr;
    if (platform::getifaddrs(&list) != 0) {
        return {};
    }
    DataUsageInfo usage;
    for (const platform::ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        count(*entry, usage);
    }
    platform::freeifaddrs(list);
    return usage;
}

} // namespace vantor
