// SPDX-License-Identifier: MIT
#include "platform/machine/InterfaceAddress.hpp"

#include "platform/machine/Machine.hpp"

#include <cstddef>
#include <utility>
#include <vector>

namespace vantor::platform {

namespace {

/// An entry with what its pointers point to. A list is one array of these; its head is the first.
struct OwnedEntry : ifaddrs {
    OwnedEntry() : ifaddrs{} {}
    sockaddr address{};
    if_data data{};
    std::string name;
};

void fill(OwnedEntry& entry, InterfaceAddress& from) {
    if (from.name) {
        entry.name = std::move(*from.name);
        entry.ifa_name = entry.name.c_str();
    }
    if (from.family) {
        entry.address.sa_family = *from.family;
        entry.ifa_addr = &entry.address;
    }
    if (from.family == AF_LINK) {
        entry.data = {from.receivedBytes, from.sentBytes};
        entry.ifa_data = &entry.data;
    }
}

} // namespace

int getifaddrs(ifaddrs** list) {
    std::optional<std::vector<InterfaceAddress>> addresses = currentMachine().interfaceAddresses();
    if (!addresses) {
        return -1;
    }
    *list = nullptr;
    if (!addresses->empty()) {
        auto* const entries = new OwnedEntry[addresses->size()];
        for (std::size_t i = 0; i < addresses->size(); ++i) {
            fill(entries[i], (*addresses)[i]);
            entries[i].ifa_next = i + 1 < addresses->size() ? &entries[i + 1] : nullptr;
        }
        *list = entries;
    }
    return 0;
}

void freeifaddrs(ifaddrs* list) {
    delete[] static_cast<OwnedEntry*>(list);
}

} // namespace vantor::platform
