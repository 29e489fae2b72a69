// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::remote {

/// Where an exporter or a server answers.
struct NodeAddress {
    std::string url;  ///< whole: "http://web01:9100/metrics"
    std::string name; ///< for people, printable: the host, and the port where it is not the usual one
};

/// Reads "HOST[:PORT][/PATH]" or a URL of http or https. Without a scheme the port is 9100 where none is
/// given; the path is /metrics. An IPv6 address stands in brackets. Absent, with the reason in English in
/// `problem`, where it is none of them or holds a user's name or password: those would be seen by everybody
/// who can list this machine's processes. Pure.
[[nodiscard]] std::optional<NodeAddress> nodeAddress(std::string_view text, std::string& problem);

/// The same for a Prometheus server, or what speaks its API: the port is 9090 where neither a scheme nor a
/// port is given, and the path, such as "/prometheus", comes without a slash at its end. Pure.
[[nodiscard]] std::optional<NodeAddress> prometheusAddress(std::string_view text, std::string& problem);

/// Scheme, host and port of a URL in lower case, the port always told: "https://web01:443". Empty for what
/// is no URL of http or https. Credentials are only ever sent to the origin that they were given for. Pure.
[[nodiscard]] std::string originOf(std::string_view url);

} // namespace vantor::platform::remote
