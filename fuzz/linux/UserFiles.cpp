// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/linux/removal/KeptReleasable.hpp"
#include "platform/linux/user/UserDirs.hpp"
#include "platform/linux/user/UserLocale.hpp"

using namespace vantor::platform::linux;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = vantor::fuzz::asText(data, size);
    const std::optional<std::string> folder = parseUserDir(text, "XDG_DOCUMENTS_DIR", "/home/u");
    vantor::fuzz::require(!folder || (folder->starts_with('/') && folder->find('\0') == std::string::npos));
    if (const std::optional<KeptReleasable> kept = parseKeptReleasable(text)) {
        vantor::fuzz::require(parseKeptReleasable(formatKeptReleasable(*kept)) == kept);
    }
    vantor::fuzz::require(languageTag(text).size() <= 7);
    return 0;
}
