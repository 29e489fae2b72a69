// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/exposition/ExpositionReader.hpp"
#include "platform/remote/readings/NodeNames.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::remote {

/// Collects the samples of one moment into a reading. Samples of other families, negative ones and those that
/// are not finite are as good as missing; of two with the same labels the first holds. Never keeps more than
/// a large machine has: 32,768 processor times, 1,024 volumes and as many links. Not for several threads at
/// once.
class ReadingBuilder {
public:
    /// Whether samples of a family are of any use here.
    [[nodiscard]] static bool wants(std::string_view family);
    void add(const Sample& sample);
    /// What was collected; the builder is spent.
    [[nodiscard]] Reading finish(std::chrono::nanoseconds taken);

private:
    void addMemory(std::string_view name, const Sample& sample);
    void addTime(const Sample& sample);
    void addVolume(std::string_view name, const Sample& sample);
    void addLink(std::string_view name, const Sample& sample);

    Reading m_reading;
    linux::MemInfo m_memInfo;
    OtherMemory m_otherMemory;
    linux::MemoryBeside m_beside;
    std::optional<std::uint64_t> m_arcSize;
    std::optional<std::uint64_t> m_arcMinimum;
    std::vector<ModeTime> m_times;                            ///< as they came
    std::map<std::string, NodeVolume, std::less<>> m_volumes; ///< by mount point
    std::map<std::string, NodeLink, std::less<>> m_links;     ///< by name
};

/// The reading that an exporter's whole answer makes.
[[nodiscard]] Reading readingFrom(std::string_view text, ExpositionFormat format,
                                  std::chrono::nanoseconds taken);

} // namespace vantor::platform::remote
