// SPDX-License-Identifier: MIT
#include "platform/linux/figures/LinkKind.hpp"

#include <algorithm>
#include <initializer_list>

namespace vantor::platform::linux {

namespace {

bool startsWithOneOf(std::string_view name, std::initializer_list<std::string_view> starts) {
    return std::any_of(starts.begin(), starts.end(), [name](auto start) { return name.starts_with(start); });
}

} // namespace

bool isModemName(std::string_view name) {
    return startsWithOneOf(name, {"ww", "rmnet", "ccmni"});
}

LinkKind kindByName(std::string_view name) {
    if (name == "lo") {
        return LinkKind::loopback;
    }
    if (isModemName(name)) {
        return LinkKind::modem;
    }
    const bool tagged = name.find('.') != std::string_view::npos; // eth0.5 is a VLAN on top of eth0
    return !tagged && startsWithOneOf(name, {"eth", "en", "wl", "ib"}) ? LinkKind::physical : LinkKind::other;
}

} // namespace vantor::platform::linux
