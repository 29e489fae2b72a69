// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/linux/figures/MemorySplit.hpp"

using namespace vantor::platform::linux;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemInfo info = parseMemInfo(vantor::fuzz::asText(data, size));
    for (const std::uint64_t other : {std::uint64_t{0}, std::uint64_t{1} << 30, ~std::uint64_t{0}}) {
        const std::optional<MemorySplit> figures =
            memorySplit(info, {.zramUsed = other, .lowWatermark = other, .arc = ArcStats{other, size}});
        vantor::fuzz::require(!figures || (info.memTotal == figures->total && figures->total > 0));
        if (figures) {
            for (const std::uint64_t part : {figures->free, figures->active, figures->inactive,
                                             figures->wired, figures->purgeable, figures->compressed}) {
                vantor::fuzz::require(part <= figures->total);
            }
            vantor::fuzz::require(figures->purgeable <= figures->free);
            vantor::fuzz::require(figures->inactive <= figures->total - figures->free);
        }
    }
    return 0;
}
