// SPDX-License-Identifier: MIT
#include "hosts/command/MemoryOutput.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"

#include <nlohmann/json.hpp>

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

std::string atRight(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
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

/// The kernel's average says for how much of the time some program waited.
std::string pressureText(const MemoryPage& page) {
    if (!page.pressure) {
        return "";
    }
    constexpr double seconds = 300;
    const auto waited = static_cast<long>(std::lround(page.pressure->average300 / 100 * seconds));
    if (waited == 0) {
        return "No program waited for memory in the last five minutes.\n";
    }
    return "Programs waited for memory for about " + std::to_string(waited) +
           " s of the last five minutes.\n";
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
           swapText(page) + pressureText(page) + '\n' + applicationsText(page);
}

std::string memoryJson(const MemoryPage& page) {
    using Json = nlohmann::ordered_json;
    Json json{{"total", page.total}, {"used", page.used}, {"available", page.available}};
    for (const MemoryPart& part : page.parts) {
        json["parts"][wordsFor(part.kind).first] = part.bytes;
    }
    json["swap"] =
        page.swap ? Json{{"total", page.swap->total}, {"used", page.swap->total - page.swap->free}} : Json();
    json["pressure"] = page.pressure
                           ? Json{{"average10", page.pressure->average10},
                                  {"average60", page.pressure->average60},
                                  {"average300", page.pressure->average300},
                                  {"seconds", static_cast<double>(page.pressure->microseconds) / 1e6}}
                           : Json();
    json["applications"] = Json::array();
    for (const ApplicationUse& use : page.applications) {
        Json processes = Json::array();
        for (const platform::ProcessIdentity& process : use.processes) {
            processes.push_back({{"pid", process.number}, {"name", platform::printableText(process.name)}});
        }
        json["applications"].push_back({{"id", use.id.empty() ? Json() : Json(use.id)},
                                        {"name", use.name},
                                        {"service", use.isService},
                                        {"memory", use.memory},
                                        {"swap", use.swap},
                                        {"processes", std::move(processes)}});
    }
    json["others"] = page.others;
    return json.dump() + '\n';
}

} // namespace vantor::hosts::command
