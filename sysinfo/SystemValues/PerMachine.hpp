// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Guarded.hpp"
#include "sysinfo/SystemValues/Replay.hpp"

#include <optional>

namespace vantor::SystemValues {

/// What was detected of a machine, kept for the life of the process: of this one, and apart from it of the
/// one that a `Replay` shows, until another one does. Any thread.
template<class T>
class PerMachine {
public:
    constexpr PerMachine() = default;

    /// Absent where nothing was kept of the machine that is shown.
    [[nodiscard]] std::optional<T> value() const {
        const std::uint64_t machine = Replay::machine();
        return (machine == 0 ? m_ofThis : m_ofReplayed).with([&](const Kept& kept) {
            return kept.machine == machine ? kept.value : std::nullopt;
        });
    }
    void keep(std::optional<T> value) {
        const std::uint64_t machine = Replay::machine();
        (machine == 0 ? m_ofThis : m_ofReplayed) = Kept{machine, std::move(value)};
    }

private:
    struct Kept {
        std::uint64_t machine = 0;
        std::optional<T> value;
    };
    PackagesBase::Guarded<Kept> m_ofThis;
    PackagesBase::Guarded<Kept> m_ofReplayed;
};

} // namespace vantor::SystemValues
