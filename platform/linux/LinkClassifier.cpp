// SPDX-License-Identifier: MIT
#include "platform/linux/LinkClassifier.hpp"

#include "platform/linux/figures/DefaultRoutes.hpp"
#include "platform/linux/kernel/Assignments.hpp"
#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace vantor::platform::linux {

namespace {

constexpr const char* folder = "sys/class/net/";

// Hardware types of include/uapi/linux/if_arp.h.
constexpr std::uint64_t typeEthernet = 1, typeFireWire = 24, typeInfiniBand = 32, typeRawIp = 519;

std::optional<std::uint64_t> firstNumber(std::string_view text) {
    const std::optional<Line> line = takeLine(text);
    return line && line->ended ? numberFrom(line->text) : std::nullopt;
}

/// Drops the links of which it is not true, unless that is all.
template<class Test>
void keepWhereAny(std::set<std::string>& links, const Test& test) {
    if (std::ranges::any_of(links, test)) {
        std::erase_if(links, [&test](const std::string& name) { return !test(name); });
    }
}

} // namespace

bool LinkClassifier::available() const {
    return m_tree.exists(folder);
}

bool LinkClassifier::exists(std::string_view name, const char* file) const {
    return m_tree.exists(folder + std::string(name) + file);
}

bool LinkClassifier::standsUponOneOf(const std::set<std::string>& links, std::string_view name) const {
    return std::ranges::any_of(
        links, [&](const std::string& link) { return exists(name, ("/lower_" + link).c_str()); });
}

std::string LinkClassifier::content(std::string_view name, const char* file) const {
    return m_tree.read(folder + std::string(name) + file).text;
}

LinkKind LinkClassifier::kind(std::string_view name) const {
    if (name == "lo") {
        return LinkKind::loopback;
    }
    // A host's end of a guest's link has a device too, on Xen's bus for them; the guest's traffic goes on
    // through a card.
    if (!exists(name, "/device") ||
        m_tree.linkedName(folder + std::string(name) + "/device/subsystem") == "xen-backend") {
        return LinkKind::other;
    }
    const std::string uevent = content(name, "/uevent");
    const std::string_view devType = ueventValue(uevent, "DEVTYPE");
    const std::uint64_t type = firstNumber(content(name, "/type")).value_or(0);
    if (devType == "wwan" || type == typeRawIp || isModemName(name)) {
        return LinkKind::modem;
    }
    // A switch's ports pass their traffic through the card that the switch hangs on (distributed switch
    // architecture), and a card that serves as the fast path of another one is counted there (Hyper-V,
    // failover).
    const bool countedElsewhere = devType == "dsa" || exists(name, "/master/device");
    const bool carriesFrames = type == typeEthernet || type == typeFireWire || type == typeInfiniBand;
    return carriesFrames && !countedElsewhere ? LinkKind::physical : LinkKind::other;
}

std::unordered_set<std::string> LinkClassifier::withoutDevice() const {
    std::unordered_set<std::string> names;
    Folder links(m_tree.path("sys/devices/virtual/net"));
    while (const char* const name = links.next()) {
        names.emplace(name);
    }
    return names;
}

std::set<std::string> LinkClassifier::waysOut() const {
    std::set<std::string> links;
    addDefaultRoutes(links, m_tree.read("proc/net/route").text);
    addDefaultRoutesOfIPv6(links, m_tree.read("proc/net/ipv6_route").text);
    keepWhereAny(links, [this](const std::string& name) {
        return firstNumber(content(name, "/type")) == typeEthernet;
    });
    keepWhereAny(links, [this](const std::string& name) { return !exists(name, "/tun_flags"); });
    const std::set<std::string> all = links;
    std::erase_if(links, [this, &all](const std::string& name) { return standsUponOneOf(all, name); });
    return links;
}

} // namespace vantor::platform::linux
