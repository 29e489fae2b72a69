// SPDX-License-Identifier: MIT
#include "hosts/command/MemoryOutput.hpp"

#include "hosts/command/PageText.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::hosts::command {

namespace {

using platform::ApplicationUse;

std::string bytesText(std::int64_t bytes) {
    using platform::NSByteCountFormatterCountStyle;
    return bytes == 0 ? "0 KB"
                      : platform::NSByteCountFormatter::stringFromByteCount(
                            bytes, NSByteCountFormatterCountStyle::memory);
}

/// A word for programs, and words for people.
std::pair<const char*, const char*> wordsFor(MemoryPartKind kind) {
    switch (kind) {
    case MemoryPartKind::applications:
        return {"applications", "applications"};
    case MemoryPartKind::kernel:
        return {"kernel", "kernel, and what is locked in memory"};
    case MemoryPartKind::compressed:
        return {"compressed", "compressed pages"};
    case MemoryPartKind::inactive:
        return {"inactive", "inactive, counted as free"};
    case MemoryPartKind::cache:
        return {"cache", "cache, given back at once"};
    case MemoryPartKind::free:
        break;
    }
    return {"free", "free"};
}

std::string partsText(const MemoryPage& page) {
    constexpr std::size_t width = 10;
    std::string text;
    for (const MemoryPart& part : page.parts) {
        if (part.bytes > 0) {
            text += atRight(bytesText(part.bytes), width) + "  " + wordsFor(part.kind).second + '\n';
        }
    }
    return text + atRight(bytesText(page.total), width) + "  in all\n";
}

std::string swapText(const MemoryPage& page) {
    if (!page.swap || page.swap->total == 0) {
        return "There is no swap.\n";
    }
    const auto used = static_cast<std::int64_t>(page.swap->total - page.swap->free);
    return bytesText(used) + " of " + bytesText(static_cast<std::int64_t>(page.swap->total)) +
           " swap is in use.\n";
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
    std::string text = row("RAM", "swap", "processes", "application");
    ApplicationUse more;
    std::size_t listed = 0;
    for (const ApplicationUse& use : page.applications) {
        if (listed < most || use.isService) {
            text += row(static_cast<std::int64_t>(use.memory), static_cast<std::int64_t>(use.swap),
                        use.processes.size(), use.name);
            listed += use.isService ? 0 : 1;
            continue;
        }
        more.memory += use.memory;
        more.swap += use.swap;
        more.processes.insert(more.processes.end(), use.processes.begin(), use.processes.end());
    }
    if (!more.processes.empty()) {
        text += row(static_cast<std::int64_t>(more.memory), static_cast<std::int64_t>(more.swap),
                    more.processes.size(), "smaller applications");
    }
    return page.others > 0 ? text + row(page.others, 0, 0, "the system, other users, files in memory") : text;
}

} // namespace

std::string memoryText(const MemoryPage& page) {
    const long percent = std::lround(page.fraction() * 100);
    return "RAM: " + bytesText(page.available) + " of " + bytesText(page.total) +
           " available, the ring is at " + std::to_string(percent) + "%\n\n" + partsText(page) + '\n' +
           swapText(page) + pressureText(page.pressure, "memory") + '\n' + applicationsText(page);
}

std::string memoryJson(const MemoryPage& page) {
    using Json = nlohmann::ordered_json;
    Json json{{"total", page.total}, {"used", page.used}, {"available", page.available}};
    for (const MemoryPart& part : page.parts) {
        json["parts"][wordsFor(part.kind).first] = part.bytes;
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
