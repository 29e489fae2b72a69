// SPDX-License-Identifier: MIT
#pragma once

#include "platform/sysctl/SysctlSource.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux::sysctl {

/// The path below /proc/sys of a key. Points lead down and slashes stand for points inside a name
/// ("net.ipv4.conf.eth0/100.forwarding"); a key whose first separator is a slash is a path already. Absent
/// for a key that would leave the folder.
[[nodiscard]] std::optional<std::string> procSysPath(std::string_view key);

/// The key of a path below /proc/sys, in its usual form.
[[nodiscard]] std::string procSysKey(std::string_view path);

/// The value of a file's text, without one line feed at its end: a number where it is one decimal integer
/// that 64 bits hold, else a text.
[[nodiscard]] SysctlValue procSysValue(std::string text);

} // namespace vantor::platform::linux::sysctl
