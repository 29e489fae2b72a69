// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Access.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::common {

/// A machine of the user's list, and what its server wants to know.
struct FleetNode {
    platform::remote::NodeAddress address;
    std::shared_ptr<const platform::remote::Access> access; ///< null: nothing
    std::optional<double> every;                            ///< seconds between questions
};

/// Looks a machine up by its name or address in a list of sources: the text of a JSON file,
/// `{"sources": [{"nodes": ["nas", "https://web01:9100"], "every": 5, "http_config": {…}}]}`, where
/// `http_config` has the keys of Prometheus's own: `basic_auth`, `authorization`, `tls_config` and
/// `http_headers`. Files in it are found from `folder` on. A secret stands in a file of its own, which nobody
/// else may read; it is opened only for the machine that is asked for. Absent, with the reason in English in
/// `problem`, which never holds a secret. `notes` gets a line for each key that is not known.
[[nodiscard]] std::optional<FleetNode> fleetNode(std::string_view text, const std::string& folder,
                                                 std::string_view name, std::string& problem,
                                                 std::vector<std::string>& notes);

} // namespace vantor::hosts::common
