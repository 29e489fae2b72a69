// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Fetcher.hpp"

#include <string>
#include <string_view>

namespace vantor::hosts::common {

/// Exporters have no password of their own, so the safe ways come first.
inline constexpr const char* howToReach =
    R"(On the machine to be watched, Debian and its kin need
  apt install prometheus-node-exporter
It answers everybody who can reach it. To keep it to itself, set
  ARGS="--web.listen-address=127.0.0.1:9100"
in its /etc/default/prometheus-node-exporter, restart it, and come through SSH:
  ssh -N -L 9101:localhost:9100 MACHINE     and here:  --node localhost:9101
Or give it a certificate (its option --web.config.file) and name it as
  --node https://MACHINE:9100
)";

/// For whoever meets a closed door, or none: what a machine's problem leaves to be done. Empty for the
/// others.
[[nodiscard]] inline std::string adviceFor(std::string_view problem) {
    return problem == platform::remote::refusal ? std::string("Nothing listens there. ") + howToReach
           : problem == platform::remote::unknownName
               ? std::string(
                     "No name service knows that machine, and an alias of SSH's own is no name: give its\n"
                     "address, or come through SSH as below. ") +
                     howToReach
               : std::string();
}

} // namespace vantor::hosts::common
