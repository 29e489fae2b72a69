// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// What a program with a window of ours arranges with the toolkit.
namespace vantor::hosts::qt {

/// Whether the environment names a display to show a window on.
[[nodiscard]] bool hasDisplay();

/// Settles what the toolkit and its libraries look up in the environment: for a picture in a file no display,
/// no scale and no bus, for a window the bus and room for the tokens of later starts. Before the application
/// object is made and before there are other threads to look.
void setEnvironment(bool forPicture);

/// The names of a program, its desktop entry's too, and the direction of the user's language. With an
/// application object.
void nameApplication(const char* program);

/// Our windows paint themselves in memory: without this the toolkit loads a GL driver of thirty megabytes for
/// window frames that are never drawn. Before the application object is made.
void keepDriversOut();

/// Drops the toolkit's own remarks, which are for its developers, unless QT_LOGGING_RULES asks for them. What
/// it cannot go on with is said through `complain`, and ends the process with 1: a display that cannot be
/// reached, or is gone, by its name. `complain` is called from any thread.
using Say = void (*)(const std::string& text);
void quietRemarks(Say complain);

/// Whether there is a font to draw texts with; without one each letter is a box. With an application object.
[[nodiscard]] bool hasFonts();

/// Ends the application's event loop once a descriptor can be read, such as that of the ending signals.
void quitWhenReadable(int descriptor);

} // namespace vantor::hosts::qt
