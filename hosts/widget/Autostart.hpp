// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/widget/Options.hpp"

#include <optional>
#include <string>

/// Starting at login: an entry in the user's autostart folder ($XDG_CONFIG_HOME/autostart).
namespace vantor::hosts::widget {

[[nodiscard]] bool isAutostarted();

/// Writes the entry for this program with a window's options, or removes it. Nothing when that worked, else
/// why it did not.
[[nodiscard]] std::optional<std::string> setAutostart(bool on, const Options& options);

/// The options have changed: the entry follows, if it is there and as it was written for those before.
/// Somebody's own is left alone.
void followInAutostart(const Options& before, const Options& now);

/// A path or a word as an argument of an entry's Exec line, quoted and escaped; absent where it cannot stand
/// on a line. Pure.
[[nodiscard]] std::optional<std::string> execArgument(const std::string& word);

/// The file of a program as the kernel names it (readlink of /proc/self/exe), without the remark that it was
/// replaced since, by an update. Pure.
[[nodiscard]] std::string installedPath(std::string path);

} // namespace vantor::hosts::widget
