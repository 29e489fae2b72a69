// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/PrintableText.hpp"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// The entry point that each target defines: called with one input after another.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vantor::fuzz {

inline std::string_view asText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// What must hold whatever the input is.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Whether a text may be shown as it is.
inline bool isPrintable(const std::string& text) {
    return platform::printableText(text, text.size() + 1) == text;
}

} // namespace vantor::fuzz
