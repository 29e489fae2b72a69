// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/LinkClassifier.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/figures/LinkNames.hpp"
#include "platform/linux/figures/NetDev.hpp"
#include "platform/linux/figures/SplitCounter.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/machine/InterfaceAddress.hpp"
#include "platform/machine/NetworkTotals.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantor::platform::linux {

/// Lists the machine's network links from /proc/net/dev under the platform's names. An entry holds 32 bits of
/// a byte counter; a link that counts has as many entries as its counters take. What a link is comes from
/// /sys and is kept while the link exists; what carries a default route is looked at again once a minute.
/// Links may come and go while the kernel writes its list: one that is listed twice counts once, and where
/// one that was counted is missing, the list is read a second time before that link counts as gone. Any
/// thread; a second caller waits for the first.
class InterfaceReader {
public:
    InterfaceReader(const MachineOptions& options, FailureBoard& failures);

    /// The link-level entries in the kernel's order; absent where the list cannot be read, which is flagged.
    [[nodiscard]] std::optional<std::vector<InterfaceAddress>> read();

    /// The counters of the links that counted when `read` last could list them; absent before.
    [[nodiscard]] std::optional<NetworkTotals> totals();

private:
    struct Link {
        LinkKind kind = LinkKind::other;
        std::optional<std::uint32_t> number; ///< of a link that counts
        std::string name;                    ///< the platform's
        std::uint64_t seen = 0;              ///< the pass that listed it last
        SplitCounter received;
        SplitCounter sent;
    };
    struct HashName {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    };
    using Links = std::unordered_map<std::string, Link, HashName, std::equal_to<>>;

    struct Listed {
        LinkCounters counters;
        Links::value_type* link; ///< null for one that is new
    };

    [[nodiscard]] bool list();
    [[nodiscard]] Links::value_type* find(std::string_view name, std::size_t place);
    [[nodiscard]] bool countedLinkMissing() const;
    void forgetMissing();
    void addNew();
    void checkKinds();
    void chooseWaysOut();
    [[nodiscard]] std::vector<InterfaceAddress> entries();

    [[nodiscard]] LinkKind kindOf(std::string_view name) const;
    void setKind(Link& link, std::string_view name, LinkKind kind);
    void release(Link& link);
    [[nodiscard]] NumberPool& pool(LinkKind kind) { return kind == LinkKind::modem ? m_modems : m_cards; }

    const MachineOptions& m_options;
    FailureBoard& m_failures;
    std::mutex m_mutex;
    KernelFile m_netDev;
    LinkClassifier m_classifier;
    bool m_hasClassifier = false; ///< whether there was a /sys when links were last added
    std::vector<Listed> m_listed;
    std::vector<Links::value_type*> m_order; ///< the links as last listed: mostly they are again
    std::size_t m_newLinks = 0;              ///< among the listed
    Links m_links;
    NumberPool m_cards;
    NumberPool m_modems;
    std::size_t m_real = 0;    ///< cards and modems
    std::size_t m_waysOut = 0; ///< what counts where there are none
    std::optional<NetworkTotals> m_totals;
    std::uint64_t m_pass = 0;
    std::optional<std::chrono::nanoseconds> m_checked;
};

} // namespace vantor::platform::linux
