// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::qt {

/// A number at the start of a text, which it and the character after it are taken off. Absent, and the text
/// as it was, where there is none.
[[nodiscard]] std::optional<int> takeNumber(std::string_view& text);

/// A window's size in logical pixels as it is kept in a file, "1200 760", and back; absent for a text that
/// says something else, or no size for a window. Pure.
[[nodiscard]] std::string sizeText(const QSize& size);
[[nodiscard]] std::optional<QSize> takeSize(std::string_view& text);

} // namespace vantor::hosts::qt
