// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Exposition.hpp"
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/formats/MemoryNames.hpp"

namespace vantor::hosts::terminal {

namespace {

void addMemory(Exposition& exposition, const MemoryFigures& memory) {
    for (const MemoryName& name : memoryNames) {
        if (const std::optional<std::int64_t> value = memory.find(name.key)) {
            exposition.gauge(name.metric, name.help, std::to_string(*value));
        }
    }
}

void addStorage(Exposition& exposition, const StorageFigures& storage, const std::string& mountPoint) {
    struct Family {
        std::string_view name, help;
        std::int64_t value;
    };
    const std::string labels =
        mountPoint.empty() ? "" : "{mountpoint=\"" + Exposition::labelled(mountPoint) + "\"}";
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
    exposition.sample("{mode=\"system\"}", Exposition::numberText(usage.system / 100));
    exposition.sample("{mode=\"user\"}", Exposition::numberText(usage.user / 100));
    exposition.sample("{mode=\"idle\"}", Exposition::numberText(usage.idle / 100));
    exposition.sample("{mode=\"nice\"}", Exposition::numberText(usage.nice / 100));
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
                              Exposition::numberText(section.chart->progress));
        }
    }
    addSources(exposition, reading);
    exposition.family("vantor_build_info", "gauge", "The program that wrote this; always 1.");
    exposition.sample("{version=\"" VANTOR_VERSION "\"}", "1");
    return exposition.text();
}

} // namespace vantor::hosts::terminal
