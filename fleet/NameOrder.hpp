// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vantor::fleet {

/// Whether one name comes before another as people count: "web2" before "web10", whatever the case of ASCII
/// letters; of names that are alike so far, the one first by its bytes. A strict order.
[[nodiscard]] bool comesBefore(std::string_view one, std::string_view other);

/// A text with its ASCII letters small: what is looked for and what it is looked for in.
[[nodiscard]] std::string smallLetters(std::string_view text);

/// Whether a text contains a part that is small already, whatever the case of the text's ASCII letters.
[[nodiscard]] bool containsSmall(std::string_view text, std::string_view smallPart);

} // namespace vantor::fleet
