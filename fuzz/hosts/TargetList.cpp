// SPDX-License-Identifier: MIT
#include "hosts/common/TargetList.hpp"

#include "Fuzz.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"

using namespace vantor;
using fuzz::isPrintable;
using fuzz::require;

/// Whatever is in the file, only whole addresses come out, and only printable words.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string problem;
    std::string doubt;
    const auto targets = hosts::common::targetsFrom(fuzz::asText(data, size), problem, doubt);
    require(targets.has_value() == problem.empty());
    require(isPrintable(problem) && isPrintable(doubt));
    if (!targets) {
        return 0;
    }
    require(targets->size() <= hosts::common::mostTargets);
    for (const platform::remote::NodeTarget& target : *targets) {
        std::string unused;
        const auto again = platform::remote::nodeAddress(target.address.url, unused);
        require(again && again->url == target.address.url && isPrintable(target.address.name));
        for (const auto& [name, value] : *target.labels) {
            require(isPrintable(name) && isPrintable(value) && !name.starts_with("__"));
        }
    }
    return 0;
}
