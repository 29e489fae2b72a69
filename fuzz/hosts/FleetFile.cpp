// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

#include "Fuzz.hpp"

using namespace vantor;
using fuzz::isPrintable;
using fuzz::require;

/// Every source that comes out can be asked; what is wrong is told, and no file of a secret is opened that
/// stands nowhere.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string folder = "/nonexistent/vantor";
    std::string problem;
    std::vector<std::string> notes;
    const auto sources = hosts::common::fleetSources(fuzz::asText(data, size), folder, problem, notes);
    require(sources.has_value() == problem.empty());
    if (!sources) {
        return 0;
    }
    require(!sources->empty());
    for (const hosts::common::FleetListed& source : *sources) {
        require(!source.name.empty() && isPrintable(source.name));
        require(!source.every || (*source.every >= 0.1 && *source.every <= 3600));
        require(source.prometheus.has_value() == (source.nodes.empty() && source.files.empty()));
        for (const platform::remote::NodeAddress& node : source.nodes) {
            require(source.node(node.url) != nullptr && source.node(node.name) != nullptr);
        }
        std::string reason;
        const auto access = hosts::common::accessOf(source, folder, reason, notes);
        require(access.has_value() == reason.empty());
        require(!source.httpConfig.empty() || *access == nullptr);
    }
    for (const std::string& note : notes) {
        require(isPrintable(note));
    }
    return 0;
}
