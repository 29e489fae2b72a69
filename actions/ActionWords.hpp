// SPDX-License-Identifier: MIT
#pragma once

#include "actions/EndApplication.hpp"
#include "actions/FreeUpMemory.hpp"

#include <string>

/// What the actions on memory say to people, the same in the window and on the command line: whole sentences
/// in the viewer's language. Any thread.
namespace vantor {

/// A size of memory: "3.1 GB".
[[nodiscard]] std::string memorySize(std::uint64_t bytes);

/// What could be moved at most, or why nothing is.
[[nodiscard]] std::string freeUpOffer(const FreeUpMemory& action);
/// Why it ended early, if it did, and what was measured.
[[nodiscard]] std::string freeUpResult(const MemoryFreed& freed);

/// What ending an application gives back, and that unsaved work is lost; or why it is not ended.
[[nodiscard]] std::string endOffer(const EndApplication& action, const std::string& name);
/// The second decision: that it still runs, and what killing it means.
[[nodiscard]] std::string killOffer(const std::string& name);
/// What was measured once it has ended; that it still runs until then.
[[nodiscard]] std::string endResult(const EndingState& state, const std::string& name);

} // namespace vantor
