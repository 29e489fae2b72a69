// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

/// The byte figures of the sections. The formatter writes a zero as a word, which the memory keeps;
/// storage and network show the digit instead.
namespace vantor {

[[nodiscard]] std::string memoryText(std::int64_t bytes);  ///< multiples of 1024, in the formatter's words
[[nodiscard]] std::string storageText(std::int64_t bytes); ///< multiples of 1000, "0" for "Zero"
/// Multiples of 1000, "0" for "Zero" and "B" for "byte": 512 reads "512 Bs", since the plural's ending stays.
[[nodiscard]] std::string trafficText(std::int64_t bytes);

} // namespace vantor
