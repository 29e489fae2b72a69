// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"

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
    struct Family {
        std::string_view key, name, help;
    };
    static constexpr Family families[] = {
        {"total", "vantor_memory_total_bytes", "Installed memory."},
        {"used", "vantor_memory_used_bytes", "Memory in use, as the widget counts it."},
        {"free", "vantor_memory_free_bytes", "Memory that programs can have at once."},
        {"active", "vantor_memory_active_bytes", "Pages of programs that stay in memory."},
        {"inactive", "vantor_memory_inactive_bytes", "Pages of programs that could be moved to swap."},
        {"wire", "vantor_memory_wired_bytes", "Memory that the kernel cannot give back."},
        {"purgeable", "vantor_memory_purgeable_bytes", "Caches that can be dropped."},
        {"compressor", "vantor_memory_compressor_bytes", "Memory that holds compressed pages."},
        {"free+inactive", "vantor_memory_free_and_inactive_bytes", "Free and inactive memory."},
        {"pressure", "vantor_memory_pressure_bytes", "Wired and compressed memory."},
    };
    for (const Family& family : families) {
        if (const std::optional<std::int64_t> value = memory.find(family.key)) {
            exposition.gauge(family.name, family.help, std::to_string(*value));
        }
    }
}

void addStorage(Exposition& exposition, const StorageFigures& storage) {
    exposition.gauge("vantor_storage_total_bytes", "Capacity of the documents' volume.",
                     std::to_string(storage.total));
    exposition.gauge("vantor_storage_used_bytes", "Used space of the documents' volume.",
                     std::to_string(storage.used));
    exposition.gauge("vantor_storage_free_bytes", "Free space of the documents' volume.",
                     std::to_string(storage.free));
    exposition.gauge("vantor_storage_releasable_bytes", "Space that could be released at once.",
                     std::to_string(storage.releasable));
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
    exposition.family("vantor_network_receive_bytes_total", "counter", "Bytes received.");
    exposition.sample("{link=\"wifi\"}", std::to_string(network.totals.cards.receivedBytes));
    exposition.sample("{link=\"wwan\"}", std::to_string(network.totals.modems.receivedBytes));
    exposition.family("vantor_network_transmit_bytes_total", "counter", "Bytes sent.");
    exposition.sample("{link=\"wifi\"}", std::to_string(network.totals.cards.sentBytes));
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
        exposition.sample("{source=\"" + std::string(sourceName(source)) + "\"}",
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
        addStorage(exposition, *records.storage);
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
            exposition.sample("{chart=\"" + std::string(section.kind->mark) + "\"}",
                              numberText(section.chart->progress));
        }
    }
    addSources(exposition, reading);
    return exposition.text();
}

} // namespace vantor::hosts::terminal
