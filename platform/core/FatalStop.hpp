// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vantor::platform {

/// The one way in which the program gives up: a broken invariant, never bad input from outside.
/// Writes "vantor: fatal: " and `what` as one line to standard error, then aborts. Any thread; does not
/// allocate.
[[noreturn]] void fatalStop(std::string_view what) noexcept;

/// Runs before the line is written, once, on the thread that stops: a host that has changed its terminal puts
/// it back here. Only async-signal-safe calls are allowed in it. A null pointer takes it away.
using FatalStopHook = void (*)() noexcept;
void setFatalStopHook(FatalStopHook hook) noexcept;

} // namespace vantor::platform
