// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetChoice.hpp"
#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/machine/Machine.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantor::platform::remote {
class MachineWatch;
struct NodeState;
} // namespace vantor::platform::remote

namespace vantor::hosts::common {

struct RemotePlace;

/// How old another machine's figures are, or why there are no newer ones.
struct NodeMoment {
    std::chrono::duration<double> interval{};      ///< what rates and shares cover
    std::chrono::duration<double> age{};           ///< since the last reading
    std::chrono::system_clock::time_point sampled; ///< when that was
    std::string problem;                           ///< empty while the machine answers
    std::optional<std::chrono::system_clock::time_point> downSince;
};

/// Which machine a command line names.
struct NodeChoice {
    std::string address = {};         ///< --node; or
    std::string machine = {};         ///< --machine: one of the sources below
    std::optional<double> every = {}; ///< seconds between questions; absent: the list's, or usual
    FleetChoice among =
        {}; ///< where that machine is known; without a source, the user's list (FleetFile.hpp)

    [[nodiscard]] bool isOther() const { return !address.empty() || !machine.empty(); }
};

/// Another machine that a host shows in place of its own, asked over the network for as long as this lives.
/// The only door through which hosts come to the network. Main thread.
class RemoteNode {
public:
    /// What is wrong with an address as it stands on a command line, in English; empty where nothing is.
    [[nodiscard]] static std::string problemWith(const std::string& address);

    /// For a choice with nothing wrong in it. Nothing is opened yet.
    explicit RemoteNode(const NodeChoice& choice);
    /// A machine of a fleet (FleetHost::openMachine), which must outlive this.
    RemoteNode(std::unique_ptr<platform::remote::MachineWatch> watch, std::string name,
               std::shared_ptr<RemotePlace> place);
    ~RemoteNode();
    RemoteNode(const RemoteNode&) = delete;
    RemoteNode& operator=(const RemoteNode&) = delete;

    /// Begins to ask.
    void start();
    /// Whether the machine has told enough to be shown.
    [[nodiscard]] bool isReady() const;
    /// Looks the machine up where that is to be done, starts, and turns the main loop until it is ready. What
    /// stands in the way is said on standard error, each thing once, and to whoever meets a closed door, how
    /// to open it. False where there is nothing to show: at once, or never for the patient.
    [[nodiscard]] bool await(const std::string& program, bool isPatient);

    /// Once it is ready. For machines of one fleet it is the same, which shows the one that became ready
    /// last.
    [[nodiscard]] platform::Machine& machine();
    [[nodiscard]] NodeMoment moment() const;
    /// Printable: what the machine is called by whoever named it.
    [[nodiscard]] const std::string& name() const;
    /// The name, and how old the figures are or since when there are none: a line in the user's language.
    [[nodiscard]] std::string heading() const;
    /// Called on the main thread whenever the machine has told something or failed to.
    void setHandler(std::function<void()> handler);

private:
    struct Parts;
    [[nodiscard]] const platform::FleetMachine* found(const platform::FleetSnapshot* snapshot) const;
    [[nodiscard]] bool look(const std::string& program, bool isPatient);
    void take();
    void show(const platform::remote::NodeState& state);
    void tell(const std::string& program);

    std::unique_ptr<Parts> m_parts;
};

} // namespace vantor::hosts::common
