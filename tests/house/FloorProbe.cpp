// SPDX-License-Identifier: MIT
// Compiled with what a target of the metrics floor may see. With VANTOR_LOOK_Up it reaches for the floor
// above.
#include "metrics/MemoryStatus.hpp"
#include "settings/SharedStore.hpp"
#ifdef VANTOR_LOOK_Up
#include "charts/Arc.hpp"
#endif
