// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/readings/Reading.hpp"

#include <vector>

namespace vantor::platform::remote {

/// The links whose bytes are the machine's traffic with others, in the reading's order: cards and modems.
/// Their traffic passes through bridges, tunnels and virtual ends as well, which would count it twice. Where
/// a Linux machine has neither, the ends that lead out of it count, as in a container. The names alone decide
/// where the node does not tell more. Points into the reading. Pure.
[[nodiscard]] std::vector<const NodeLink*> countedLinks(const Reading& reading);

} // namespace vantor::platform::remote
