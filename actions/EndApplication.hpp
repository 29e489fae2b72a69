// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Pace.hpp"
#include "platform/machine/WorkloadControl.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vantor {

/// Why an application is not ended.
enum class EndRefusal : std::uint8_t {
    none,
    isGone,        ///< none of its processes runs any more
    isOurs,        ///< a program of ours, or one that this program runs in
    isSession,     ///< the session rests on it: its services, its leader, the user's service manager
    isSystem,      ///< the first process of the machine
    isAnotherUsers ///< also where only some of its processes are
};

/// Where the ending of an application stands. Bytes.
struct EndingState {
    std::size_t told = 0; ///< processes that got a signal
    std::size_t left = 0; ///< of those, the ones that still run
    std::optional<std::uint64_t> availableBefore = {};
    std::optional<std::uint64_t> availableNow = {};
    std::vector<std::string> problems = {}; ///< in English, printable: who could not be told, and why
};

/// Ends an application: asks all its processes to end, and ends them by force only when that is wanted after
/// they had their time. Unsaved work is lost either way: the signal asks nobody to save. On a worker, one
/// thread at a time; no call waits.
class EndApplication {
public:
    /// How long the processes have before they may be killed.
    static constexpr std::chrono::seconds patience{5};

    /// Looks whether that application may be ended, and ends nothing.
    explicit EndApplication(const platform::ApplicationUse& application, Pace pace = {});

    [[nodiscard]] EndRefusal refusal() const { return m_refusal; }
    /// About what will be available then: its memory, and what the kernel holds for it.
    [[nodiscard]] std::uint64_t comesBack() const { return m_comesBack; }
    /// What its end gives back of the swap.
    [[nodiscard]] std::uint64_t swap() const { return m_swap; }

    /// Asks the processes that were listed, and what runs in their groups by now, to end.
    [[nodiscard]] EndingState terminate();
    /// Who is left now, and what is available: to be asked again and again.
    [[nodiscard]] EndingState state();
    /// Whether killing may be offered: some still run after `patience`.
    [[nodiscard]] bool mayKill();
    /// Ends those that are left by force; does nothing before `mayKill`.
    [[nodiscard]] EndingState kill();

private:
    [[nodiscard]] EndRefusal look(const std::vector<platform::ProcessIdentity>& processes);
    void hold();
    void tell(platform::EndSignal signal);

    struct Held {
        platform::RunningProcess process;
        std::unique_ptr<platform::ProcessHandle> handle;
    };

    Pace m_pace;
    std::uint64_t m_comesBack, m_swap;
    std::vector<platform::RunningProcess> m_listed;
    std::set<std::string> m_groups; ///< that are the application's own
    EndRefusal m_refusal;
    std::vector<Held> m_held;
    std::optional<Pace::Moment> m_asked;
    EndingState m_state;
};

} // namespace vantor
