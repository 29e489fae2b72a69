// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace vantor::hosts::terminal {

/// What became of a text: it was written, its reader has gone, or it could not be written.
enum class Output : std::uint8_t { written, unread, failed };

/// Writes everything to standard output, however long its reader takes, be it that the descriptor waits for
/// him or not. A failure is told on standard error. Main thread.
[[nodiscard]] Output writeOut(std::string_view text);

} // namespace vantor::hosts::terminal
