// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/RemoteNode.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <cstddef>
#include <memory>
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
    [[nodiscard]] bool isWall() const;
    /// One other machine, the ordinary widget: neither a wall nor this machine.
    [[nodiscard]] bool isOne() const;
};

/// The machines of a wall, asked over the network for as long as this lives: with RemoteNode the only door
/// through which hosts come to the network. Main thread.
class FleetHost {
public:
    /// What is wrong with a choice as it stands on a command line, in English and naming the option; empty
    /// where nothing is.
    [[nodiscard]] static std::string problemWith(const FleetChoice& choice);

    /// For a choice with nothing wrong in it. Nothing is opened yet.
    explicit FleetHost(FleetChoice choice);
    ~FleetHost();
    FleetHost(const FleetHost&) = delete;
    FleetHost& operator=(const FleetHost&) = delete;

    /// Reads the lists and opens libcurl; nothing is asked yet. What is wrong is said on standard error.
    /// False where there is nothing to show at all.
    [[nodiscard]] bool open(const std::string& program);

    /// Once it is open.
    [[nodiscard]] platform::FleetSource& source();
    /// Printable: what to call the whole.
    [[nodiscard]] const std::string& name() const;
    /// A machine of the last snapshot, to be shown as the ordinary widget: start it, and show it when it is
    /// ready. Null where it is gone. One at a time; it must go before this does.
    [[nodiscard]] std::unique_ptr<RemoteNode> openMachine(const platform::FleetMachine& machine);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace vantor::hosts::common
