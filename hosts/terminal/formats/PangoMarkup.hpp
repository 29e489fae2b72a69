// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// A text as the content of Pango markup, which Waybar's texts and tooltips are.
[[nodiscard]] std::string markup(std::string_view text);

} // namespace vantor::hosts::terminal
