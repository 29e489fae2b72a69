// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/exposition/ExpositionReader.hpp"
#include "platform/remote/readings/NodeNames.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <map>
#include <string>
#include <utility>

namespace vantor::platform::remote {

/// Collects the samples of one moment into a reading. Samples of other families, negative ones and those that
/// are not finite are as good as missing; of two with the same labels the first holds. Never keeps more than
/// a large machine has: 32,768 processor times, 1,024 volumes and as many links. Not for several threads at
/// once.
class ReadingBuilder {
public:
    void add(const Sample& sample);
    /// What was collected; the builder is spent.
    [[nodiscard]] Reading finish(std::chrono::nanoseconds taken);

private:
    void addMemory(std::string_view name, const Sample& sample);
    void addVolume(std::string_view name, const Sample& sample);
    void addLink(std::string_view name, const Sample& sample);

    Reading m_reading;
    linux::MemInfo m_memInfo;
    OtherMemory m_otherMemory;
    linux::MemoryBeside m_beside;
    std::optional<std::uint64_t> m_arcSize;
    std::optional<std::uint64_t> m_arcMinimum;
    std::map<std::pair<std::string, std::string>, double> m_times; ///< by processor and mode
    std::map<std::string, NodeVolume> m_volumes;                   ///< by mount point
    std::map<std::string, NodeLink> m_links;                       ///< by name
};

/// The reading that an exporter's whole answer makes.
[[nodiscard]] Reading readingFrom(std::string_view text, ExpositionFormat format,
                                  std::chrono::nanoseconds taken);

} // namespace vantor::platform::remote
