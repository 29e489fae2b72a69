// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::common {

/// For whoever meets a closed door: exporters have no password of their own, so the safe ways come first.
inline constexpr const char* howToReach =
    R"(Nothing listens there. On the machine to be watched, Debian and its kin need
  apt install prometheus-node-exporter
It answers everybody who can reach it. To keep it to itself, set
  ARGS="--web.listen-address=127.0.0.1:9100"
in its /etc/default/prometheus-node-exporter, restart it, and come through SSH:
  ssh -N -L 9101:localhost:9100 MACHINE     and here:  --node localhost:9101
Or give it a certificate (its option --web.config.file) and name it as
  --node https://MACHINE:9100
)";

} // namespace vantor::hosts::common
