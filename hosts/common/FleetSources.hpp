// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetChoice.hpp"
#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"
#include "platform/remote/sources/WatchedNode.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::common {

struct FleetListed;

/// The sources that a command line names, opened. Nothing is asked before one is started. Main thread.
class FleetSources {
public:
    struct Opened {
        std::string name; ///< printable
        std::unique_ptr<platform::FleetSource> source;
        /// A watch of the machine of a key; null where there is none, or it cannot be opened.
        std::function<std::unique_ptr<platform::remote::MachineWatch>(std::string_view key)> watchOf;
    };

    /// What is wrong with matchers of labels, in English; empty where nothing is.
    [[nodiscard]] static std::string problemWithSelector(const std::string& text);

    /// Opens what a choice with nothing wrong in it names.
    void open(const FleetChoice& choice);

    [[nodiscard]] const std::vector<Opened>& opened() const { return m_opened; }
    /// Lines in English about what could not be opened, or is doubtful.
    [[nodiscard]] const std::vector<std::string>& complaints() const { return m_complaints; }

private:
    using Access = std::shared_ptr<const platform::remote::Access>;

    [[nodiscard]] bool hasFetcher();
    void openDemo(std::size_t count);
    void openNodes(const std::string& name, std::vector<platform::remote::NodeTarget> fixed,
                   const std::vector<std::string>& files, const Access& access, std::optional<double> every);
    void openPrometheus(platform::remote::PrometheusOptions options);
    void openList(const FleetChoice& choice);
    void openListed(const FleetListed& listed, const FleetChoice& choice, const std::string& folder,
                    const std::string& path);

    struct Shut { ///< a source of the list that cannot be opened, and why; both printable
        std::string name;
        std::string problem;
    };

    std::unique_ptr<platform::remote::Fetcher> m_fetcher; ///< outlives the sources
    std::vector<Opened> m_opened;
    std::vector<Shut> m_shut;
    std::vector<std::string> m_complaints;
};

} // namespace vantor::hosts::common
