// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::remote {

/// Reads matchers as they stand between the braces of a PromQL selector, with or without the braces:
/// `job="node",dc!~"x|y"`. They come back without braces and without a comma at their end. Absent, with the
/// reason in English in `problem`, where they are none: what a question is made of must not end it early.
/// Pure.
[[nodiscard]] std::optional<std::string> selectorFrom(std::string_view text, std::string& problem);

/// Whether it can be the name of a label. Pure.
[[nodiscard]] bool isLabelName(std::string_view text);

/// A PromQL string of any text, with its quotes. Pure.
[[nodiscard]] std::string quotedPromQL(std::string_view text);

/// Appends a field to the body of a POST (application/x-www-form-urlencoded). Pure.
void appendFormField(std::string& form, std::string_view name, std::string_view value);

/// A time in seconds with three decimals, in the C locale. Pure.
[[nodiscard]] std::string secondsText(double seconds);

} // namespace vantor::platform::remote
