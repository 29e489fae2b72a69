// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Texts of lines NAME=value, as the kernel's uevent files and the shell's way of writing settings have them
/// (os-release(5), user-dirs.dirs(5)). Pure.
namespace vantor::platform::linux {

/// The value of a name in a uevent file ("DEVTYPE=wwan"): the first line's; empty where there is none. A last
/// line without a line feed may be cut short and is not looked at.
[[nodiscard]] std::string_view ueventValue(std::string_view uevent, std::string_view name);

/// A value as a shell reads it: single and double quotes taken off, a backslash takes the next character as
/// it is, and what follows a quoted value after a blank is not part of it. Absent where a quote is not
/// closed.
[[nodiscard]] std::optional<std::string> unquoted(std::string_view value);

} // namespace vantor::platform::linux
