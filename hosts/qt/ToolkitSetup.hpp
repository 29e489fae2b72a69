// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// What a program with a window of ours arranges with the toolkit.
namespace vantor::hosts::qt {

/// Whether the environment names a display to show a window on.
[[nodiscard]] bool hasDisplay();

/// Our windows paint themselves in memory: without this the toolkit loads a GL driver of thirty megabytes for
/// window frames that are never drawn. Before the application object is made.
void keepDriversOut();

/// Drops the toolkit's own remarks, which are for its developers, unless QT_LOGGING_RULES asks for them. What
/// it cannot go on with is said on standard error after `program` and a colon, and ends the process with 1: a
/// display that cannot be reached, or is gone, by its name.
void quietRemarks(std::string program);

/// Whether there is a font to draw texts with; without one each letter is a box. With an application object.
[[nodiscard]] bool hasFonts();

/// Ends the application's event loop once a descriptor can be read, such as that of the ending signals.
void quitWhenReadable(int descriptor);

} // namespace vantor::hosts::qt
