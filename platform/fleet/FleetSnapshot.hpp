// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform {

/// What a wall shows of a machine. The first three are used shares from 0 to 1, the last two bytes a second.
enum class FleetFigure : std::uint8_t { memory, storage, processor, received, sent };

/// One machine at one moment. What it did not tell is absent: shown as "–", never as 0.
struct FleetMachine {
    std::string key;        ///< what tells it from all others of its source; not for people
    std::string name;       ///< what it is called; printable
    std::size_t source = 0; ///< in the snapshot's list
    std::shared_ptr<const std::vector<std::pair<std::string, std::string>>>
        labels;         ///< for grouping and filtering, ordered by name, printable; may be null
    std::string volume; ///< where the fullest volume, whose share is told, is mounted; printable
    std::array<std::optional<double>, 5> figures; ///< by FleetFigure
    /// When its last reading was taken, on the steady clock; absent where there was none yet.
    std::optional<std::chrono::nanoseconds> taken;
    /// Since when it has been asked in vain; absent while it answers. Figures are then its last ones.
    std::optional<std::chrono::system_clock::time_point> downSince;
    std::string problem; ///< why it is down, in English and printable; empty while it answers

    [[nodiscard]] const std::optional<double>& figure(FleetFigure which) const {
        return figures.at(static_cast<std::size_t>(which));
    }
};

/// Where machines are known from.
struct FleetOrigin {
    std::string name;                                 ///< what the user calls it; printable
    std::chrono::duration<double> interval{};         ///< what its rates and shares cover
    std::chrono::duration<double> staleAfter{};       ///< a reading older than this is no figure of now
    std::optional<std::chrono::nanoseconds> answered; ///< when it last answered, on the steady clock
    std::string problem; ///< why it does not, or what is doubtful in what it tells; English, printable
    bool isSilent =
        false; ///< the problem is that it does not answer: its machines' figures are the last ones
};

/// All machines at one moment: made whole by a source and never changed, so that it can be handed from
/// thread to thread and be replaced at once.
struct FleetSnapshot {
    std::vector<FleetOrigin> sources;
    std::vector<FleetMachine> machines; ///< ordered by source, then key; each once
};

/// Where snapshots come from. Main thread.
class FleetSource {
public:
    FleetSource() = default;
    virtual ~FleetSource() = default;
    FleetSource(const FleetSource&) = delete;
    FleetSource& operator=(const FleetSource&) = delete;

    /// Begins to ask, or goes on after `pause`.
    virtual void start() = 0;
    /// Asks nothing until it is started again: nobody looks.
    virtual void pause() = 0;
    /// The last one; null before anything is known.
    [[nodiscard]] virtual std::shared_ptr<const FleetSnapshot> snapshot() const = 0;
    /// Whether each machine and origin has answered, or failed to, since the start: a report can be made.
    [[nodiscard]] virtual bool isSettled() const = 0;
    /// Called on the main thread after each change of the above.
    virtual void setHandler(std::function<void()> handler) = 0;
};

} // namespace vantor::platform
