// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/formats/MemoryNames.hpp"
#include "platform/core/PrintableText.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor::hosts::terminal {

namespace {

std::string numberText(double value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? "+Inf" : "-Inf";
    }
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

/// The exposition in the making: a family's head, then its samples.
class Exposition {
public:
    void family(std::string_view name, std::string_view type, std::string_view help) {
        m_name = name;
        m_text.append("# HELP ").append(name).append(" ").append(help).append("\n");
        m_text.append("# TYPE ").append(name).append(" ").append(type).append("\n");
    }
    void sample(std::string_view labels, const std::string& value) {
        m_text.append(m_name).append(labels).append(" ").append(value).append("\n");
    }
    void gauge(std::string_view name, std::string_view help, const std::string& value) {
        family(name, "gauge", help);
        sample("", value);
    }
    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    std::string m_name;
    std::string m_text;
};

void addMemory(Exposition& exposition, const MemoryFigures& memory) {
    for (const MemoryName& name : memoryNames) {
        if (const std::optional<std::int64_t> value = memory.find(name.key)) {
            exposition.gauge(name.metric, name.help, std::to_string(*value));
        }
    }
}

/// A label's value: backslashes and quotation marks are escaped, and it has to be UTF-8 in one line.
std::string labelled(std::string_view value) {
    std::string escaped;
    for (const char c : platform::printableText(value, 4096)) {
        escaped += c == '\\' || c == '"' ? "\\" : "";
        escaped += c;
    }
    return escaped;
}

void addStorage(Exposition& exposition, const StorageFigures& storage, const std::string& mountPoint) {
    struct Family {
        std::string_view name, help;
        std::int64_t value;
    };
    const std::string labels = mountPoint.empty() ? "" : "{mountpoint=\"" + labelled(mountPoint) + "\"}";
    for (const Family& family :
         {Family{"vantor_storage_total_bytes", "Capacity of the documents' volume.", storage.total},
          {"vantor_storage_used_bytes", "Used space of the documents' volume.", storage.used},
          {"vantor_storage_free_bytes", "Free space of the documents' volume.", storage.free},
          {"vantor_storage_releasable_bytes", "Space that could be released at once.", storage.releasable}}) {
        exposition.family(family.name, "gauge", family.help);
        exposition.sample(labels, std::to_string(family.value));
    }
}

void addProcessor(Exposition& exposition, const CpuUsage& usage) {
    exposition.family("vantor_cpu_usage_ratio", "gauge",
                      "Share of the processors' time since the sample before.");
    exposition.sample("{mode=\"system\"}", numberText(usage.system / 100));
    exposition.sample("{mode=\"user\"}", numberText(usage.user / 100));
    exposition.sample("{mode=\"idle\"}", numberText(usage.idle / 100));
    exposition.sample("{mode=\"nice\"}", numberText(usage.nice / 100));
}

void addNetwork(Exposition& exposition, const NetworkFigures& network) {
    exposition.family("vantor_network_receive_bytes_total", "counter",
                      "Bytes that network cards (lan) and modems (wwan) received.");
    exposition.sample("{link=\"lan\"}", std::to_string(network.totals.cards.receivedBytes));
    exposition.sample("{link=\"wwan\"}", std::to_string(network.totals.modems.receivedBytes));
    exposition.family("vantor_network_transmit_bytes_total", "counter",
                      "Bytes that network cards (lan) and modems (wwan) sent.");
    exposition.sample("{link=\"lan\"}", std::to_string(network.totals.cards.sentBytes));
    exposition.sample("{link=\"wwan\"}", std::to_string(network.totals.modems.sentBytes));
    if (!network.isFirst) {
        exposition.gauge("vantor_network_receive_last_second_bytes", "Bytes received in the last second.",
                         std::to_string(network.receivedDelta));
        exposition.gauge("vantor_network_transmit_last_second_bytes", "Bytes sent in the last second.",
                         std::to_string(network.sentDelta));
    }
}

void addSources(Exposition& exposition, const Reading& reading) {
    exposition.family("vantor_source_up", "gauge", "Whether a source could be read (1) or not (0).");
    for (const platform::Source source : platform::allSources) {
        exposition.sample("{source=\"" + std::string(wordOf(source)) + "\"}",
                          reading.hasFailed(source) ? "0" : "1");
    }
}

} // namespace

std::string prometheusText(const Reading& reading) {
    Exposition exposition;
    const ReportRecords& records = reading.records;
    if (records.memory) {
        addMemory(exposition, *records.memory);
    }
    if (records.storage) {
        addStorage(exposition, *records.storage, reading.mountPoint);
    }
    if (records.processor) {
        addProcessor(exposition, *records.processor);
    }
    if (records.network) {
        addNetwork(exposition, *records.network);
    }
    exposition.family("vantor_chart_progress_ratio", "gauge", "What a ring shows; 1 is full.");
    for (const Reading::Section& section : reading.sections) {
        if (section.chart && !section.hasFailed) {
            exposition.sample("{chart=\"" + std::string(wordOf(section.kind->source)) + "\"}",
                              numberText(section.chart->progress));
        }
    }
    addSources(exposition, reading);
    exposition.family("vantor_build_info", "gauge", "The program that wrote this; always 1.");
    exposition.sample("{version=\"" VANTOR_VERSION "\"}", "1");
    return exposition.text();
}

} // namespace vantor::hosts::terminal
