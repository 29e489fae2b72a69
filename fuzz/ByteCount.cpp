// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"

#include <cstring>
#include <string>

using namespace vantor::platform;

/// Eight bytes of count, one of style, the rest a language tag.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::int64_t count = 0;
    if (size <= sizeof count) {
        return 0;
    }
    std::memcpy(&count, data, sizeof count);
    LocaleSigns signs;
    signs.language = vantor::fuzz::asText(data + 9, size - 9);
    signs.grouping = "'";
    const auto style = static_cast<NSByteCountFormatterCountStyle>(data[8] % 3);
    const std::string text = NSByteCountFormatter::stringFromByteCount(count, style, signs);
    vantor::fuzz::require(text.starts_with('-') == (count < 0));
    vantor::fuzz::require(text.size() >= 4 && text.size() < 24);
    const bool isMemory = style == NSByteCountFormatterCountStyle::memory;
    vantor::fuzz::require(isMemory || text.find('\'') == std::string::npos);
    vantor::fuzz::require(text.find("1'024") == std::string::npos);
    return 0;
}
