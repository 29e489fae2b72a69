// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/linux/figures/TickAccount.hpp"
#include "platform/linux/records/TickScale.hpp"

using namespace vantor::platform;
using namespace vantor::platform::linux;

/// Each line is taken for the first one of a /proc/stat, two seconds after the one before.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = vantor::fuzz::asText(data, size);
    const std::size_t processors = countProcessors(text);
    vantor::fuzz::require(processors <= size);
    TickAccount account(100);
    TickScale scale;
    host_cpu_load_info last{};
    std::chrono::seconds now{0};
    for (int reading = 0; reading < 16 && !text.empty(); ++reading) {
        now += std::chrono::seconds(2);
        if (const std::optional<ProcessorTimes> times = parseProcStat(text)) {
            const host_cpu_load_info next =
                scale.add(account.advance(*times, now, processors), std::chrono::seconds(2));
            vantor::fuzz::require(next.user >= last.user && next.system >= last.system &&
                                  next.idle >= last.idle && next.nice >= last.nice);
            last = next;
        }
        const std::size_t end = text.find('\n');
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return 0;
}
