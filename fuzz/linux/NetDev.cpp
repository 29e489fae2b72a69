// SPDX-License-Identifier: MIT
#include "platform/linux/figures/NetDev.hpp"

#include "Fuzz.hpp"
#include "platform/linux/figures/LinkNames.hpp"

using namespace vantor::platform::linux;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = vantor::fuzz::asText(data, size);
    while (const std::optional<LinkCounters> link = takeLink(text)) {
        // The name becomes part of a path under /sys and must stay one folder there.
        vantor::fuzz::require(!link->name.empty() && link->name.size() < 16 && link->name != ".." &&
                              link->name.find('/') == std::string_view::npos);
        const LinkKind kind = kindByName(link->name);
        const std::string name = unnumberedName(kind, link->name);
        vantor::fuzz::require(!name.starts_with("en") && !name.starts_with("pdp_ip"));
    }
    return 0;
}
