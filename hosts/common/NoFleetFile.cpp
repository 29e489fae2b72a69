// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"

namespace vantor::hosts::common {

std::optional<FleetNode> fleetNode(std::string_view /*text*/, const std::string& /*folder*/,
                                   std::string_view /*name*/, std::string& problem,
                                   std::vector<std::string>& /*notes*/) {
    problem = "this program was built without nlohmann-json";
    return std::nullopt;
}

} // namespace vantor::hosts::common
