// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

class QWidget;

namespace vantor::hosts::qt {

/// Whether a file's name has an ending, which is given in small letters.
[[nodiscard]] bool isPicture(std::string_view name, std::string_view ending);

/// Draws what a widget and its children paint into a file, whose name ends in .png or .svg, with `scale`
/// pixels per point. The file is written in one piece, so that there is never half a file. The exit status of
/// the program: 1 when the file cannot be written, which is said on standard error after the name of the
/// program.
[[nodiscard]] int writePicture(QWidget& widget, const std::string& name, double scale,
                               std::string_view program);

} // namespace vantor::hosts::qt
