// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantor::hosts::common {

/// Which machines a command line names.
struct FleetChoice {
    std::vector<std::string> nodes = {}; ///< --node, each of them
    std::string nodesFile = {};          ///< --nodes
    std::string prometheus = {};         ///< --prometheus
    std::string select = {};             ///< --select
    bool listed = false;                 ///< --fleet, with or without a name
    std::string list = {};               ///< that name: one source of ~/.config/vantor/fleet.json
    std::size_t demo = 0;                ///< --demo-fleet
    std::optional<double> every = {};    ///< --every: seconds between questions; absent: the list's, or usual
    std::string groupBy = {};            ///< --group-by: a label
    std::string sort = {};               ///< --sort: a word of the option; empty: worst
    std::string machine = {};            ///< --machine: one of them alone

    /// Many machines at once: several --node, or any other source, unless --machine picks one.
    [[nodiscard]] bool isWall() const {
        return machine.empty() &&
               (nodes.size() > 1 || !nodesFile.empty() || !prometheus.empty() || listed || demo > 0);
    }
    /// One other machine, the ordinary widget: neither a wall nor this machine.
    [[nodiscard]] bool isOne() const { return !machine.empty() || (nodes.size() == 1 && !isWall()); }
    /// Whether it says where machines are known from.
    [[nodiscard]] bool hasSource() const {
        return !nodes.empty() || !nodesFile.empty() || !prometheus.empty() || listed || demo > 0;
    }
};

} // namespace vantor::hosts::common
