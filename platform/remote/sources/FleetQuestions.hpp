// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/sources/PrometheusOptions.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantor::platform::remote {

/// What a wall asks a server, one after the other. One question for each figure: the parts cost a server less
/// than all of them joined in one.
enum class FleetQuestion : std::uint8_t {
    up,        ///< which machines there are, with all labels, and whether their exporters answer
    names,     ///< what they call themselves
    ambiguous, ///< which identities several machines share: asked at the start
    spacing,   ///< when one machine was measured: how far apart that is
    age,
    memory,
    storage,
    processor,
    received,
    sent,
};

inline constexpr std::array everyRefresh{
    FleetQuestion::up,        FleetQuestion::age,      FleetQuestion::memory, FleetQuestion::storage,
    FleetQuestion::processor, FleetQuestion::received, FleetQuestion::sent};

/// The question's name for messages; those of figures are the keys of the user's own.
[[nodiscard]] std::string_view questionName(FleetQuestion question);

/// In PromQL, the user's own where there is one. `spacing` is not asked by this: it has a machine
/// (spacingText). Pure.
[[nodiscard]] std::string questionText(FleetQuestion question, const PrometheusOptions& options);

/// Matchers for one machine, by the values of the identity's labels, and for the user's selector. Pure.
[[nodiscard]] std::string machineMatchers(const PrometheusOptions& options,
                                          const std::vector<std::string>& identity);

/// When a machine was measured in the last five minutes. Pure.
[[nodiscard]] std::string spacingText(const std::string& matchers);

/// All that the widget shows of one machine, in the last five minutes: each sample at its true time. Pure.
[[nodiscard]] std::string machineText(const std::string& matchers);

} // namespace vantor::platform::remote
