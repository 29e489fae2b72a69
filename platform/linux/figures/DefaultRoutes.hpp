// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// Adds the links that carry a default route to a set of names: of the text of /proc/net/route (proc_net(5)),
/// which holds the main table of IPv4, and of /proc/net/ipv6_route, which holds all tables of IPv6. Routes
/// that refuse traffic, lines that cannot be read and a last one that is cut short are passed over. Pure.
void addDefaultRoutes(std::set<std::string>& links, std::string_view route);
void addDefaultRoutesOfIPv6(std::set<std::string>& links, std::string_view route);

} // namespace vantor::platform::linux
