// SPDX-License-Identifier: MIT
#include "platform/remote/readings/ReadingFrom.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t mostTimes = 32768;
constexpr std::size_t mostOthers = 1024;

bool takePrefix(std::string_view& name, std::string_view prefix) {
    if (!name.starts_with(prefix)) {
        return false;
    }
    name.remove_prefix(prefix.size());
    return true;
}

/// A count of bytes; absent where the value cannot be one.
std::optional<std::uint64_t> bytesOf(double value) {
    constexpr double most = 0x1p63;
    return value >= 0 && value < most ? std::optional(static_cast<std::uint64_t>(value)) : std::nullopt;
}

std::optional<int> smallNumber(double value) {
    constexpr double most = 0x7FFFFFFF;
    return value >= 0 && value <= most ? std::optional(static_cast<int>(value)) : std::nullopt;
}

template<class T>
void keepFirst(std::optional<T>& kept, const std::optional<T>& value) {
    if (!kept) {
        kept = value;
    }
}

/// The entry of a name, made where there is room for one more; else null.
template<class Map>
typename Map::mapped_type* entry(Map& map, std::string_view key, std::size_t most) {
    if (const auto known = map.find(key); known != map.end()) {
        return &known->second;
    }
    return map.size() < most ? &map[std::string(key)] : nullptr;
}

/// Tells a processor's mode from its others and from those of other processors: FNV-1a over both names.
/// Whoever makes two of them alike spoils their own machine's figures.
std::uint64_t keyOf(std::string_view processor, std::string_view mode) {
    std::uint64_t key = 0xCBF29CE484222325;
    const auto add = [&key](char sign) { key = (key ^ static_cast<unsigned char>(sign)) * 0x100000001B3; };
    std::ranges::for_each(processor, add);
    add('\0');
    std::ranges::for_each(mode, add);
    return key;
}

template<class Record, std::size_t size>
bool keepFigure(Record& record, const std::array<MemoryName<Record>, size>& names, std::string_view name,
                double value) {
    const auto known = std::ranges::find(names, name, &MemoryName<Record>::name);
    if (known == names.end()) {
        return false;
    }
    keepFirst(record.*(known->figure), bytesOf(value));
    return true;
}

} // namespace

/// Most of what an exporter tells is of no use here: its labels need not be read.
bool ReadingBuilder::wants(std::string_view family) {
    if (!takePrefix(family, "node_")) {
        return false;
    }
    if (takePrefix(family, "network_")) {
        constexpr std::array<std::string_view, 6> names{"receive_bytes_total", "transmit_bytes_total",
                                                        "protocol_type",       "iface_id",
                                                        "iface_link",          "address_assign_type"};
        return std::ranges::find(names, family) != names.end();
    }
    constexpr std::array<std::string_view, 7> begins{"memory_",           "cpu_seconds_total", "filesystem_",
                                                     "boot_time_seconds", "uname_info",        "zfs_arc_size",
                                                     "zfs_arc_c_min"};
    return std::ranges::any_of(begins, [family](auto begin) { return family.starts_with(begin); });
}

void ReadingBuilder::add(const Sample& sample) {
    std::string_view name = sample.name;
    if (!takePrefix(name, "node_") || !std::isfinite(sample.value)) {
        return;
    }
    if (takePrefix(name, "memory_")) {
        addMemory(name, sample);
    } else if (name == "cpu_seconds_total") {
        addTime(sample);
    } else if (takePrefix(name, "filesystem_")) {
        addVolume(name, sample);
    } else if (takePrefix(name, "network_")) {
        addLink(name, sample);
    } else if (name == "boot_time_seconds") {
        keepFirst(m_reading.bootSeconds, std::optional(sample.value));
    } else if (name == "uname_info" && m_reading.nodeName.empty()) {
        m_reading.nodeName = sample.label("nodename");
    } else if (name == "zfs_arc_size") {
        keepFirst(m_arcSize, bytesOf(sample.value));
    } else if (name == "zfs_arc_c_min") {
        keepFirst(m_arcMinimum, bytesOf(sample.value));
    }
}

void ReadingBuilder::addMemory(std::string_view name, const Sample& sample) {
    if (!keepFigure(m_memInfo, linuxMemoryNames, name, sample.value)) {
        keepFigure(m_otherMemory, otherMemoryNames, name, sample.value);
    }
}

void ReadingBuilder::addTime(const Sample& sample) {
    if (sample.value >= 0 && m_times.size() < mostTimes) {
        const std::string_view mode = sample.label("mode");
        m_times.push_back({keyOf(sample.label("cpu"), mode), sample.value, kindOfMode(mode)});
    }
}

void ReadingBuilder::addVolume(std::string_view name, const Sample& sample) {
    const std::string_view mountPoint = sample.label("mountpoint");
    NodeVolume* const volume = mountPoint.empty() ? nullptr : entry(m_volumes, mountPoint, mostOthers);
    if (volume == nullptr) {
        return;
    }
    if (volume->mountPoint.empty()) {
        volume->mountPoint = mountPoint;
        volume->device = sample.label("device");
        volume->type = sample.label("fstype");
    }
    if (name == "size_bytes") {
        keepFirst(volume->size, bytesOf(sample.value));
    } else if (name == "avail_bytes") { // on the BSDs below zero where root writes into what is reserved
        keepFirst(volume->available, bytesOf(std::max(0.0, sample.value)));
    } else if (name == "free_bytes") {
        keepFirst(volume->free, bytesOf(sample.value));
    } else if (name == "purgeable_bytes") {
        keepFirst(volume->purgeable, bytesOf(sample.value));
    } else if (name == "readonly") {
        volume->isReadOnly = volume->isReadOnly || sample.value != 0;
    } else if (name == "device_error") {
        volume->hasFailed = volume->hasFailed || sample.value != 0;
    }
}

void ReadingBuilder::addLink(std::string_view name, const Sample& sample) {
    const std::string_view device = sample.label("device");
    const bool isReceived = name == "receive_bytes_total";
    const bool isSent = name == "transmit_bytes_total";
    const bool isAbout = name == "protocol_type" || name == "iface_id" || name == "iface_link" ||
                         name == "address_assign_type";
    if (device.empty() || (!isReceived && !isSent && !isAbout)) {
        return;
    }
    NodeLink* const link = entry(m_links, device, mostOthers);
    if (link == nullptr) {
        return;
    }
    link->name = device;
    if (isReceived) {
        keepFirst(link->received, bytesOf(sample.value));
    } else if (isSent) {
        keepFirst(link->sent, bytesOf(sample.value));
    } else if (name == "protocol_type") {
        keepFirst(link->protocolType, smallNumber(sample.value));
    } else if (name == "iface_id") {
        keepFirst(link->index, smallNumber(sample.value));
    } else if (name == "iface_link") {
        keepFirst(link->lowerIndex, smallNumber(sample.value));
    } else {
        keepFirst(link->addressType, smallNumber(sample.value));
    }
}

Reading ReadingBuilder::finish(std::chrono::nanoseconds taken) {
    m_reading.taken = taken;
    if (m_arcSize && m_arcMinimum) {
        m_beside.arc = linux::ArcStats{.size = *m_arcSize, .minimum = *m_arcMinimum};
    }
    if (m_memInfo.memTotal) {
        m_reading.system = NodeSystem::linux;
        m_reading.memory = linux::memorySplit(m_memInfo, m_beside);
    } else if (m_otherMemory.total || m_otherMemory.size) {
        m_reading.system = m_otherMemory.total ? NodeSystem::macOS : NodeSystem::bsd;
        m_reading.memory = memorySplit(m_otherMemory);
    }
    std::ranges::stable_sort(m_times, {}, &ModeTime::key);
    const auto again = std::ranges::unique(m_times, {}, &ModeTime::key);
    m_times.erase(again.begin(), again.end());
    m_reading.processor.assign(m_times.begin(), m_times.end()); // no larger than need be
    for (auto& [mountPoint, volume] : m_volumes) {
        m_reading.volumes.push_back(std::move(volume));
    }
    for (auto& [name, link] : m_links) {
        m_reading.links.push_back(std::move(link));
    }
    return std::move(m_reading);
}

Reading readingFrom(std::string_view text, ExpositionFormat format, std::chrono::nanoseconds taken) {
    ExpositionReader reader(text, format, &ReadingBuilder::wants);
    ReadingBuilder builder;
    while (const Sample* const sample = reader.next()) {
        builder.add(*sample);
    }
    return builder.finish(taken);
}

} // namespace vantor::platform::remote
