// SPDX-License-Identifier: MIT
#include "hosts/command/MemoryOutput.hpp"

#include "hosts/command/PageText.hpp"
#include "pages/PageWords.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor::hosts::command {

namespace {

using platform::ApplicationUse;

std::string bytesText(std::int64_t bytes) {
    using platform::NSByteCountFormatterCountStyle;
    return bytes == 0 ? "0 KB"
                      : platform::NSByteCountFormatter::stringFromByteCount(
                            bytes, NSByteCountFormatterCountStyle::memory);
}

/// The part's key in JSON.
const char* keyOf(MemoryPartKind kind) {
    switch (kind) {
    case MemoryPartKind::applications:
        return "applications";
    case MemoryPartKind::kernel:
        return "kernel";
    case MemoryPartKind::compressed:
        return "compressed";
    case MemoryPartKind::inactive:
        return "inactive";
    case MemoryPartKind::cache:
        return "cache";
    case MemoryPartKind::free:
        break;
    }
    return "free";
}

std::string partsText(const MemoryPage& page) {
    constexpr std::size_t width = 10;
    std::string text;
    for (const MemoryPart& part : page.parts) {
        if (part.bytes > 0) {
            text += atRight(bytesText(part.bytes), width) + "  " + partWords(part.kind) + '\n';
        }
    }
    return text + atRight(bytesText(page.total), width) + "  " + words("page_ALL") + '\n';
}

std::string row(const std::string& memory, const std::string& swap, const std::string& processes,
                const std::string& name) {
    return atRight(memory, 10) + atRight(swap, 12) + atRight(processes, 11) + "  " + name + '\n';
}

std::string row(std::int64_t memory, std::int64_t swap, std::size_t processes, const std::string& name) {
    return row(bytesText(memory), bytesText(swap), processes > 0 ? std::to_string(processes) : "", name);
}

std::string applicationsText(const MemoryPage& page) {
    constexpr std::size_t most = 20;
    std::string text = row(words("host_MEMORY"), words("page_SWAPCOLUMN"), words("page_PROCESSES"),
                           words("page_APPLICATION"));
    ApplicationUse more;
    std::size_t listed = 0;
    for (const ApplicationUse& use : page.applications) {
        if (listed < most || use.isService) {
            text += row(static_cast<std::int64_t>(use.memory), static_cast<std::int64_t>(use.swap),
                        use.processes.size(), applicationWords(use));
            listed += use.isService ? 0 : 1;
            continue;
        }
        more.memory += use.memory;
        more.swap += use.swap;
        more.processes.insert(more.processes.end(), use.processes.begin(), use.processes.end());
    }
    if (!more.processes.empty()) {
        text += row(static_cast<std::int64_t>(more.memory), static_cast<std::int64_t>(more.swap),
                    more.processes.size(), words("page_RAMSMALLER"));
    }
    return page.others > 0 ? text + row(page.others, 0, 0, words("page_RAMOTHERS")) : text;
}

} // namespace

std::string memoryText(const MemoryPage& page) {
    const std::string head = platform::textWithValue(
        words("page_RAMHEAD", "available", bytesText(page.available)), "total", bytesText(page.total));
    const std::string pressure = pressureWords(page.pressure, WaitedFor::memory);
    return platform::textWithValue(head, "share", percentText(page.fraction() * 100, 0)) + "\n\n" +
           partsText(page) + '\n' + swapWords(page.swap) + '\n' + pressure +
           (pressure.empty() ? "\n" : "\n\n") + applicationsText(page);
}

std::string memoryJson(const MemoryPage& page) {
    using Json = nlohmann::ordered_json;
    Json json{{"total", page.total}, {"used", page.used}, {"available", page.available}};
    for (const MemoryPart& part : page.parts) {
        json["parts"][keyOf(part.kind)] = part.bytes;
    }
    json["swap"] =
        page.swap ? Json{{"total", page.swap->total}, {"used", page.swap->total - page.swap->free}} : Json();
    json["pressure"] = pressureJson(page.pressure);
    json["applications"] = Json::array();
    for (const ApplicationUse& use : page.applications) {
        json["applications"].push_back({{"id", use.id.empty() ? Json() : Json(use.id)},
                                        {"name", use.name},
                                        {"service", use.isService},
                                        {"memory", use.memory},
                                        {"swap", use.swap},
                                        {"processes", processesJson(use.processes)}});
    }
    json["others"] = page.others;
    return json.dump() + '\n';
}

} // namespace vantor::hosts::command
