// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

/// The session bus, before anybody uses it.
namespace vantor::hosts::qt {

/// Sees to it that the toolkit and its libraries find a session bus that answers, or none: one that is not
/// there would be started by them (dbus-launch(1)), and for one that accepts and says nothing they would wait
/// for ever, before the first picture. Sets DBUS_SESSION_BUS_ADDRESS where it has to; waits half a second at
/// most. Before the application object is made and before there are other threads.
void settleSessionBus();

/// The same for a program that wants no bus at all.
void refuseSessionBus();

/// Whether a bus at `address` (as the D-Bus specification writes addresses) greets within `patience`. Only
/// sockets of this machine are asked. Any thread.
[[nodiscard]] bool answersAsBus(const std::string& address, std::chrono::milliseconds patience);

} // namespace vantor::hosts::qt
