// SPDX-License-Identifier: MIT
#include "hosts/common/FleetSources.hpp"
#include "hosts/common/TargetList.hpp"

namespace vantor::hosts::common {

namespace {

constexpr const char* missing = "this program was built without nlohmann-json";

} // namespace

std::string FleetSources::problemWithSelector(const std::string& /*text*/) {
    return missing;
}

void FleetSources::openPrometheus(platform::remote::PrometheusOptions /*options*/) {
    m_complaints.emplace_back(missing);
}

void FleetSources::openList(const FleetChoice& /*choice*/) {
    m_complaints.emplace_back(missing);
}

std::optional<std::vector<platform::remote::NodeTarget>>
targetsFrom(std::string_view /*text*/, std::string& problem, std::string& /*doubt*/) {
    problem = missing;
    return std::nullopt;
}

} // namespace vantor::hosts::common
