// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vantor::platform::linux {

/// What a network link is to someone who asks for the machine's traffic.
enum class LinkKind {
    physical, ///< a wired or Wi-Fi card
    modem,    ///< a mobile network's
    loopback, ///< the machine itself
    wayOut,   ///< carries a default route where there is neither card nor modem, as in a container
    other     ///< bridges, tunnels, bonds, the host's ends of containers: their traffic is counted elsewhere
};

/// Whether a name is one that the drivers of mobile modems give: "wwan0", "rmnet_data0", "ccmni1".
[[nodiscard]] bool isModemName(std::string_view name);

/// A guess by name alone, for machines without /sys: the names are the kernel's and systemd's
/// (systemd.net-naming-scheme(7)).
[[nodiscard]] LinkKind kindByName(std::string_view name);

} // namespace vantor::platform::linux
