// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

/// Starting at login: an entry in the user's autostart folder ($XDG_CONFIG_HOME/autostart).
namespace vantor::hosts::widget {

[[nodiscard]] bool isAutostarted();

/// Writes the entry for this program or removes it. Nothing when that worked, else why it did not.
[[nodiscard]] std::optional<std::string> setAutostart(bool on);

/// A path as an argument of an entry's Exec line, quoted and escaped. Pure.
[[nodiscard]] std::string execArgument(const std::string& path);

} // namespace vantor::hosts::widget
