// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string_view>

namespace vantor::hosts::qt {

/// A text of the program in the user's language.
[[nodiscard]] QString hostText(std::string_view key);
/// The same with the one placeholder filled in.
[[nodiscard]] QString hostText(std::string_view key, std::string_view placeholder, std::string_view value);

/// A name and its value as one is read out: "Used RAM, 34%".
[[nodiscard]] QString valueText(std::string_view name, std::string_view value);

/// Whether the user's language is written from right to left, as its captions tell.
[[nodiscard]] bool isRightToLeft();

} // namespace vantor::hosts::qt
