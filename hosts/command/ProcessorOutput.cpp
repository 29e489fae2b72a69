// SPDX-License-Identifier: MIT
#include "hosts/command/ProcessorOutput.hpp"

#include "hosts/command/PageText.hpp"
#include "pages/PageWords.hpp"
#include "pages/Shares.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

namespace vantor::hosts::command {

namespace {

std::string percent(double value) {
    return percentText(value, 1);
}

/// The processors in rows of eight, as whole percent.
std::string processorsText(const ProcessorPage& page) {
    constexpr std::size_t aRow = 8;
    std::string text;
    for (std::size_t i = 0; i < page.processors.size(); ++i) {
        const bool startsRow = i % aRow == 0;
        text += startsRow ? (i == 0 ? "" : "\n") + atRight("cpu" + std::to_string(i), 8) : "";
        text += atRight(percentText(page.processors[i], 0), 6);
    }
    return text.empty() ? "" : text + "\n\n";
}

std::string stateText(const ProcessorPage& page) {
    std::string text;
    if (const auto& loads = page.state.loads) {
        const std::string first = words("page_LOADS", "one", decimalWords((*loads)[0], 2));
        const std::string second = platform::textWithValue(first, "five", decimalWords((*loads)[1], 2));
        text += platform::textWithValue(second, "fifteen", decimalWords((*loads)[2], 2)) + '\n';
    }
    if (const std::string pressure = pressureWords(page.pressure, WaitedFor::processor); !pressure.empty()) {
        text += pressure + '\n';
    }
    if (page.state.hertz) {
        text += words("page_FREQUENCY", "value", decimalWords(*page.state.hertz / 1e9, 2)) + '\n';
    }
    if (page.state.celsius) {
        text += words("page_TEMPERATURE", "value", decimalWords(*page.state.celsius, 0)) + '\n';
    }
    return text;
}

/// "1 h 05 min", "3 min 07 s", "12.5 s".
std::string durationText(std::uint64_t microseconds) {
    constexpr std::uint64_t second = 1'000'000, minute = 60, hour = 3600;
    const std::uint64_t seconds = microseconds / second;
    const auto two = [](std::uint64_t value) {
        const std::string digits = std::to_string(value);
        return (digits.size() < 2 ? "0" : "") + digits;
    };
    if (seconds >= hour) {
        return std::to_string(seconds / hour) + " h " + two(seconds % hour / minute) + " min";
    }
    if (seconds >= minute) {
        return std::to_string(seconds / minute) + " min " + two(seconds % minute) + " s";
    }
    return decimalWords(static_cast<double>(microseconds) / static_cast<double>(second), 1) + " s";
}

std::string shareRow(const std::string& share, const std::string& cores, const std::string& time,
                     const std::string& name) {
    return atRight(share, 7) + atRight(cores, 8) + atRight(time, 16) + "  " + name + '\n';
}

std::string applicationsText(const ProcessorPage& page) {
    constexpr std::size_t most = 20;
    std::string text = shareRow(words("page_SHARE"), words("page_CORES"), words("page_SINCESTART"),
                                words("page_APPLICATION"));
    std::size_t listed = 0;
    double more = 0;
    std::uint64_t moreTime = 0;
    for (const ProcessorShare& share : page.applications) {
        if (listed < most || share.use.isService) {
            text += shareRow(percent(share.shown), decimalWords(share.cores, 1),
                             durationText(share.use.processorTime), applicationWords(share.use));
            listed += share.use.isService ? 0 : 1;
        } else {
            more += share.shown;
            moreTime += share.use.processorTime;
        }
    }
    if (moreTime > 0) {
        text += shareRow(percent(more), "", durationText(moreTime), words("page_CPUSMALLER"));
    }
    return text + shareRow(percent(page.othersShown), "", "", words("page_CPUOTHERS"));
}

} // namespace

std::string processorText(const ProcessorPage& page) {
    const CpuUsage& usage = page.usage;
    const std::vector<double> parts = tenthsOf({usage.user, usage.system, usage.nice}, page.busy());
    const double idle = 100 - (parts[0] + parts[1] + parts[2]);
    return words("page_CPUHEAD", "share", percentText(page.busy(), 0)) + "\n\n" +
           shareRow(percent(parts[0]), "", "", words("page_USER")) +
           shareRow(percent(parts[1]), "", "", words("page_SYSTEM")) +
           shareRow(percent(parts[2]), "", "", words("page_NICE")) +
           shareRow(percent(idle), "", "", words("page_IDLE")) + '\n' + processorsText(page) +
           stateText(page) + '\n' + applicationsText(page);
}

std::string processorJson(const ProcessorPage& page) {
    using Json = nlohmann::ordered_json;
    Json json{{"busy", page.busy()},     {"user", page.usage.user}, {"system", page.usage.system},
              {"nice", page.usage.nice}, {"idle", page.usage.idle}, {"processors", page.processors}};
    json["loads"] = page.state.loads ? Json(*page.state.loads) : Json();
    json["pressure"] = pressureJson(page.pressure);
    json["hertz"] = page.state.hertz ? Json(*page.state.hertz) : Json();
    json["celsius"] = page.state.celsius ? Json(*page.state.celsius) : Json();
    json["applications"] = Json::array();
    for (const ProcessorShare& share : page.applications) {
        json["applications"].push_back(
            {{"id", share.use.id.empty() ? Json() : Json(share.use.id)},
             {"name", share.use.name},
             {"service", share.use.isService},
             {"percent", share.percent},
             {"cores", share.cores},
             {"secondsSinceStart", static_cast<double>(share.use.processorTime) / 1e6},
             {"processes", processesJson(share.use.processes)}});
    }
    json["others"] = page.others;
    return json.dump() + '\n';
}

} // namespace vantor::hosts::command
