// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Release.hpp"

#include <string>

namespace vantor {

/// What a deletion came to: what was deleted, and what the volume gained by it, in whole sentences in the
/// viewer's language, the same in the window and on the command line. Any thread.
[[nodiscard]] std::string releaseResult(const Released& released);

/// A size of storage: "3.1 GB".
[[nodiscard]] std::string storageSize(std::uint64_t bytes);

} // namespace vantor
