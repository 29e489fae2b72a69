// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Access.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

/// One source of the user's list: a Prometheus, or machines that are asked directly.
struct FleetListed {
    std::string name; ///< printable; "fleet" where the list has none
    std::optional<platform::remote::PrometheusOptions> prometheus; ///< without name, `every` and access
    std::vector<platform::remote::NodeAddress> nodes;
    std::vector<std::string> files; ///< patterns of lists of targets, whole paths
    std::optional<double> every;    ///< seconds between questions
    std::string httpConfig;         ///< JSON, for accessOf; empty where there is none

    /// The node that is called so or has that address; null where there is none.
    [[nodiscard]] const platform::remote::NodeAddress* node(std::string_view called) const;
};

/// Reads a list of sources: the text of a JSON file, `{"sources": [{"name": "home", "nodes": ["nas"]}]}`,
/// with `prometheus`, `select`, `identity` and `queries`, or `nodes` and `file_sd`, and for both `every` and
/// `http_config`. Files are found from `folder` on; none is opened. Absent, with the reason in English in
/// `problem`, which never holds a secret. `notes` gets a line for each key that is not known.
[[nodiscard]] std::optional<std::vector<FleetListed>> fleetSources(std::string_view text,
                                                                   const std::string& folder,
                                                                   std::string& problem,
                                                                   std::vector<std::string>& notes);

/// What the servers of a source want to know; null where that is nothing. Only here secrets are opened, each
/// in a file of its own that nobody else may read. Absent, with the reason in `problem`, where one cannot be.
[[nodiscard]] std::optional<std::shared_ptr<const platform::remote::Access>>
accessOf(const FleetListed& source, const std::string& folder, std::string& problem,
         std::vector<std::string>& notes);

} // namespace vantor::hosts::common
