// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/LinkKind.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

namespace vantor::platform::linux {

/// Finds out a link's kind from /sys/class/net (Documentation/ABI/testing/sysfs-class-net). Any thread.
class LinkClassifier {
public:
    explicit LinkClassifier(const KernelTree& tree) : m_tree(tree) {}

    /// False where the machine shows no /sys: then names are all there is.
    [[nodiscard]] bool available() const;

    /// Never `wayOut`: that is what a link does, not what it is.
    [[nodiscard]] LinkKind kind(std::string_view name) const;

    /// The names of the links that have no device, for when many are to be told apart: one folder lists them
    /// all. Empty where it cannot be read.
    [[nodiscard]] std::unordered_set<std::string> withoutDevice() const;

    /// The links that carry a default route: in a container, all that leaves it. Left out are those whose
    /// traffic becomes another one's: tunnels (WireGuard, tun, PPP) beside an Ethernet link, taps beside one
    /// that is none, and what stands upon another of them (VLAN, macvlan).
    [[nodiscard]] std::set<std::string> waysOut() const;

private:
    [[nodiscard]] bool exists(std::string_view name, const char* file) const;
    [[nodiscard]] bool standsUponOneOf(const std::set<std::string>& links, std::string_view name) const;
    [[nodiscard]] std::string content(std::string_view name, const char* file) const;

    const KernelTree& m_tree;
};

} // namespace vantor::platform::linux
