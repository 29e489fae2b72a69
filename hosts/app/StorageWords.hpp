// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"

#include <QString>

namespace vantor::hosts::app {

/// Multiples of 1000: storage.
[[nodiscard]] QString storageSize(std::int64_t bytes);
/// What a deletion came to, and what stayed.
[[nodiscard]] QString deletedText(const Released& deleted);

} // namespace vantor::hosts::app
