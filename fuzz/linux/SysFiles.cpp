// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/linux/figures/LinkKind.hpp"
#include "platform/linux/figures/ZramStat.hpp"
#include "platform/linux/kernel/Assignments.hpp"

using namespace vantor::platform::linux;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = vantor::fuzz::asText(data, size);
    (void)parseZramMemoryUsed(text);
    vantor::fuzz::require(ueventValue(text, "DEVTYPE").find('\n') == std::string_view::npos);
    vantor::fuzz::require(kindByName(text) != LinkKind::wayOut);
    return 0;
}
