// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vantor::hosts::common {

/// Whether a JSON text nests deeper than any list of machines does. The library walks through what it has
/// read with a call for each level, so a text that is nothing but brackets would take all of the stack. Pure.
[[nodiscard]] bool nestsTooDeep(std::string_view json);

} // namespace vantor::hosts::common
