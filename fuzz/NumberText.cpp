// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/foundation/ParseDouble.hpp"
#include "platform/propertylist/PropertyListText.hpp"

#include <cmath>
#include <string>

using namespace vantor::platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = vantor::fuzz::asText(data, size);
    const std::optional<double> number = parseDouble(text);
    vantor::fuzz::require(!number || !parseDouble(std::string(text) + ' '));
    const std::optional<double> real = parsePropertyListReal(text);
    // Where both forms accept a text they agree on its value.
    vantor::fuzz::require(!number || !real || *number == *real || (std::isnan(*number) && std::isnan(*real)));
    (void)parsePropertyListInteger(text);
    (void)parsePropertyListDate(text);
    std::string bytes;
    vantor::fuzz::require(!appendBase64(bytes, text) || bytes.size() <= text.size());
    return 0;
}
