// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace vantor::hosts::qt {

/// The program's icon in the sizes that title bars and lists of windows show. It is in the program, so that
/// it is there whether or not the program is installed.
[[nodiscard]] QIcon appIcon();

} // namespace vantor::hosts::qt
