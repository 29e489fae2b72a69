// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// The id of the application that a control group belongs to, from the group's path below the user's own
/// service manager ("app.slice/app-gnome-org.gnome.Nautilus-12.scope"): that of the last component that names
/// one. Desktops name the groups app[-launcher]-ID-RANDOM.scope and app[-launcher]-ID[@RANDOM].service
/// (systemd's "Desktop Environment Integration"), with "\x2d" for a dash in a part; older GNOMEs wrote
/// gnome-launched-ID.desktop-PID.scope, snaps write snap.SNAP.APP-UUID.scope, whose desktop entry is
/// SNAP_APP. An id is a file's name: one with a slash or a control character is none. Pure.
[[nodiscard]] std::optional<std::string> applicationIdOf(std::string_view groupPath);

} // namespace vantor::platform::linux
