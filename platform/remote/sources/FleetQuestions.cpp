// SPDX-License-Identifier: MIT
#include "platform/remote/sources/FleetQuestions.hpp"

#include "platform/remote/sources/QuestionText.hpp"

namespace vantor::platform::remote {

namespace {

/// Data's own volumes, as VolumeChoice.cpp chooses them.
constexpr std::string_view volumes =
    R"(fstype!~"tmpfs|ramfs|squashfs|overlay|iso9660|vfat|msdosfs|fuse[.].*|nfs.*|cifs|smbfs|9p|devfs|procfs|fdescfs|linprocfs",)"
    R"(mountpoint!~"/boot(/.*)?|/run(/.*)?")";
/// Cards and modems by name, as Linux, macOS and the drivers of the BSDs call them.
constexpr std::string_view links =
    R"(device=~"(eth|en|wl|ib|ww|rmnet|ccmni)[^.:@]*|(em|igb|igc|ix|ixl|re|bge|bce|vtnet|vmx|hn|xn|vio|wm|msk|nfe|alc|ale)[0-9]+")";
constexpr std::string_view machineNames =
    R"x(__name__=~"up|node_(cpu_seconds_total|boot_time_seconds|uname_info|zfs_arc_(size|c_min)|)x"
    R"x(memory_(MemTotal|MemFree|MemAvailable|Active_anon|Inactive_anon|Active_file|Inactive_file|Unevictable|)x"
    R"x(SwapFree|Zswap|Dirty|Writeback|SReclaimable|SUnreclaim|KernelStack|PageTables|SecPageTables|Percpu|Hugetlb|)x"
    R"x(total|size|free|active|inactive|wired|cache|compressed|internal|purgeable)_bytes|)x"
    R"x(filesystem_(size|avail|free|purgeable)_bytes|filesystem_(readonly|device_error)|)x"
    R"x(network_(receive|transmit)_bytes_total|network_(protocol_type|address_assign_type|iface_id|iface_link))")x";

class Writer {
public:
    explicit Writer(const PrometheusOptions& options) : m_select(options.select) {
        for (const std::string& label : options.identity) {
            m_identity += (m_identity.empty() ? "" : ", ") + label;
        }
    }

    [[nodiscard]] std::string by(std::string_view more = {}) const {
        return " by (" + m_identity + std::string(more) + ") ";
    }
    /// A selector of a metric: the user's matchers behind ours.
    [[nodiscard]] std::string of(std::string_view metric, std::string_view matchers = {}) const {
        const bool hasBoth = !matchers.empty() && !m_select.empty();
        return std::string(metric) + '{' + std::string(matchers) + (hasBoth ? "," : "") + m_select + '}';
    }
    [[nodiscard]] std::string up() const {
        return of("up") + " and on (job) group by (job) (last_over_time(" + of("node_uname_info") + "[1h]))";
    }
    /// As readings are made into memory's parts (NodeNames.cpp): what is not free at once. Each system has
    /// names of its own, so that each machine is in one of the three.
    [[nodiscard]] std::string memory() const {
        const std::string mac = '(' + of("node_memory_internal_bytes") + " - " +
                                of("node_memory_purgeable_bytes") + " + " + of("node_memory_wired_bytes") +
                                " + " + of("node_memory_compressed_bytes") + ") / " +
                                of("node_memory_total_bytes");
        const std::string size = of("node_memory_size_bytes");
        const std::string bsd = "1 - (" + of("node_memory_free_bytes") + " + " +
                                of("node_memory_inactive_bytes") + " + (" + of("node_memory_cache_bytes") +
                                " or 0 * " + size + ")) / " + size;
        return "max" + by() + "(1 - " + of("node_memory_MemAvailable_bytes") + " / " +
               of("node_memory_MemTotal_bytes") + ") or max" + by() + '(' + mac + ") or max" + by() + '(' +
               bsd + ')';
    }
    /// The fullest volume that can be written to: used / (used + available), as VolumeChoice.hpp has it, in
    /// the form that matches series twice. One match more for each would double what it costs a server.
    [[nodiscard]] std::string storage() const {
        return "topk" + by() + "(1, 1 / (1 + " + of("node_filesystem_avail_bytes", volumes) + " / (" +
               of("node_filesystem_size_bytes", volumes) + " - " + of("node_filesystem_free_bytes", volumes) +
               ")) unless on (" + m_identity + ", device, mountpoint) (" +
               of("node_filesystem_readonly", volumes) + " == 1))";
    }
    /// Before the average over the processors, the two idle modes of one are added.
    [[nodiscard]] std::string processor() const {
        return "1 - avg" + by() + "(sum" + by(", cpu") + "(irate(" +
               of("node_cpu_seconds_total", R"(mode=~"idle|iowait|wait")") + "[5m])))";
    }
    [[nodiscard]] std::string traffic(std::string_view metric) const {
        return "sum" + by() + "(irate(" + of(metric, links) + "[5m]))";
    }
    [[nodiscard]] std::string age() const {
        return "time() - max" + by() + "(timestamp(" + of("node_uname_info") + "))";
    }
    [[nodiscard]] std::string names() const {
        return "group" + by(", nodename") + '(' + of("node_uname_info") + ')';
    }
    [[nodiscard]] std::string ambiguous() const {
        return "count" + by() + '(' + of("node_uname_info") + ") > 1";
    }

private:
    std::string m_select;
    std::string m_identity;
};

std::string ownOr(const std::string& own, const std::string& usual) {
    return own.empty() ? usual : own;
}

} // namespace

std::string_view questionName(FleetQuestion question) {
    constexpr std::array<std::string_view, 10> names{"up",     "names",   "ambiguous", "spacing",  "age",
                                                     "memory", "storage", "processor", "received", "sent"};
    return names.at(static_cast<std::size_t>(question));
}

std::string questionText(FleetQuestion question, const PrometheusOptions& options) {
    const Writer write(options);
    const PrometheusQueries& own = options.queries;
    switch (question) {
    case FleetQuestion::up:
        return ownOr(own.up, write.up());
    case FleetQuestion::names:
        return write.names();
    case FleetQuestion::ambiguous:
        return write.ambiguous();
    case FleetQuestion::spacing:
        return spacingText(options.select);
    case FleetQuestion::age:
        return ownOr(own.age, write.age());
    case FleetQuestion::memory:
        return ownOr(own.memory, write.memory());
    case FleetQuestion::storage:
        return ownOr(own.storage, write.storage());
    case FleetQuestion::processor:
        return ownOr(own.processor, write.processor());
    case FleetQuestion::received:
        return ownOr(own.received, write.traffic("node_network_receive_bytes_total"));
    default:
        return ownOr(own.sent, write.traffic("node_network_transmit_bytes_total"));
    }
}

std::string machineMatchers(const PrometheusOptions& options, const std::vector<std::string>& identity) {
    std::string matchers;
    for (std::size_t i = 0; i < options.identity.size() && i < identity.size(); ++i) {
        matchers += (matchers.empty() ? "" : ",") + options.identity[i] + '=' + quotedPromQL(identity[i]);
    }
    return matchers + (options.select.empty() || matchers.empty() ? "" : ",") + options.select;
}

std::string spacingText(const std::string& matchers) {
    return "up{" + matchers + "}[5m]";
}

std::string machineText(const std::string& matchers) {
    return '{' + std::string(machineNames) + ',' + matchers + "}[5m]";
}

std::string problemWith(const PrometheusOptions& options) {
    std::string problem;
    if (!selectorFrom(options.select, problem)) {
        return problem;
    }
    if (options.identity.empty()) {
        return "the identity needs a label at least";
    }
    for (const std::string& label : options.identity) {
        if (!isLabelName(label)) {
            return "the identity is a list of labels' names";
        }
    }
    return {};
}

} // namespace vantor::platform::remote
