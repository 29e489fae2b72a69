// SPDX-License-Identifier: MIT
#include "platform/remote/readings/LinkChoice.hpp"

#include "platform/linux/figures/LinkKind.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace vantor::platform::remote {

namespace {

using linux::LinkKind;

bool startsWithOneOf(std::string_view name, const auto& starts) {
    return std::ranges::any_of(starts, [name](std::string_view start) { return name.starts_with(start); });
}

/// BSD drivers each have a name of their own, so what is none of them is told instead.
bool isCardOnBSD(std::string_view name) {
    constexpr std::array<std::string_view, 19> others{
        "lo",    "bridge", "tap", "tun",  "gif",  "gre",   "stf",  "vlan",  "epair", "wg",
        "pflog", "pfsync", "enc", "carp", "lagg", "trunk", "ipfw", "usbus", "vether"};
    return !startsWithOneOf(name, others);
}

/// A number that a person or systemd set can belong to a card as to a bridge: then the name decides.
bool isCardOnLinux(const NodeLink& link) {
    const LinkKind kind = linux::kindByName(link.name);
    if (kind == LinkKind::loopback || kind == LinkKind::modem) {
        return kind == LinkKind::modem;
    }
    constexpr int ethernet = 1;
    constexpr int firewire = 24;
    constexpr int infiniband = 32;
    constexpr int ownAddress = 0;
    constexpr int setAddress = 3;
    if (!link.protocolType || !link.addressType || *link.addressType == setAddress) {
        return kind == LinkKind::physical && link.index == link.lowerIndex;
    }
    const bool isCardType =
        *link.protocolType == ethernet || *link.protocolType == firewire || *link.protocolType == infiniband;
    return isCardType && link.index == link.lowerIndex && *link.addressType == ownAddress;
}

bool isCard(const NodeLink& link, NodeSystem system) {
    switch (system) {
    case NodeSystem::macOS:
        return link.name.starts_with("en");
    case NodeSystem::bsd:
        return isCardOnBSD(link.name);
    default:
        return isCardOnLinux(link);
    }
}

} // namespace

std::vector<const NodeLink*> countedLinks(const Reading& reading) {
    std::vector<const NodeLink*> counted;
    for (const NodeLink& link : reading.links) {
        if (isCard(link, reading.system)) {
            counted.push_back(&link);
        }
    }
    if (counted.empty()) {
        for (const NodeLink& link : reading.links) {
            if (link.index && link.lowerIndex && link.index != link.lowerIndex) {
                counted.push_back(&link);
            }
        }
    }
    return counted;
}

} // namespace vantor::platform::remote
