// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetChoice.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <memory>
#include <string>

namespace vantor::hosts::common {

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
    enum class Silent { sources, all };
    /// Names on standard error what is silent in the last snapshot, sources or machines too, each once until
    /// it answers again; and how to open a door where nobody listens. A machine is silent that was asked in
    /// vain, has told nothing yet, or nothing for too long, unless all that of its source is. For hosts
    /// without a wall. True where anything is silent, told now or before.
    bool tellSilent(const std::string& program, Silent which = Silent::all);

    /// The same for whoever shows one machine alone. Null where it is gone.
    [[nodiscard]] std::unique_ptr<platform::remote::MachineWatch>
    watchOf(const platform::FleetMachine& machine);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace vantor::hosts::common
