// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// What is used of a desktop entry (freedesktop.org's Desktop Entry Specification).
struct DesktopEntry {
    std::string name; ///< as it is in the file: not yet printable
    std::string icon;
    std::string program; ///< the name of the file that Exec starts, without its folders
    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the group "Desktop Entry" of a file. Absent without a Name, and for what is no application. Pure.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(std::string_view text);

} // namespace vantor::platform::linux
