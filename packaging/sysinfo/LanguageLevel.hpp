// SPDX-License-Identifier: MIT
#pragma once

// Says in one sentence what a compiler at an older language level would say in six hundred lines.
#if __cplusplus < 202002L
#error "the Vantor headers need C++20: compile with -std=c++20 or later"
#include "vantor/needs C++20" // is not there, which ends the compilation here
#endif
