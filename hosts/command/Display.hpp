// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::command {

/// Whether the environment names a display that somebody serves: WAYLAND_DISPLAY (wayland(7)) or DISPLAY
/// (X(7)). A name that outlived its server, as in a tmux whose connection ended, is none. Of a server on
/// another machine, and of names in a form of their own, it takes the environment's word.
[[nodiscard]] bool hasDisplay();

} // namespace vantor::hosts::command
