// SPDX-License-Identifier: MIT
#include "actions/Release.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

#include <chrono>
#include <map>
#include <set>

namespace vantor {

namespace {

/// What is available on each volume that these folders are on; absent where one does not say.
std::optional<std::map<std::string, std::uint64_t>> available(const std::vector<Deletion>& deletions) {
    std::map<std::string, std::uint64_t> volumes;
    std::set<std::string> folders;
    for (const Deletion& deletion : deletions) {
        if (!folders.insert(deletion.folder).second) {
            continue;
        }
        const std::optional<platform::VolumeSpace> volume =
            platform::currentDisposal().volumeOf(deletion.folder);
        if (!volume) {
            return std::nullopt;
        }
        volumes[volume->identity] = volume->available;
    }
    return volumes;
}

void countAgain() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(2);
    (void)platform::currentDisposal().releasableParts([end] { return Clock::now() < end; });
}

} // namespace

Released release(const std::vector<Deletion>& deletions, const platform::Disposal::KeepGoing& keepGoing) {
    Released result;
    const auto before = available(deletions);
    for (const Deletion& deletion : deletions) {
        if (!keepGoing()) {
            result.problems.emplace_back(platform::NSLocalizedString("action_STOPPED"));
            break;
        }
        const platform::Removal removal = deletion.run();
        result.bytes += removal.bytes;
        result.items += removal.problem.empty() ? 1 : 0;
        if (!removal.problem.empty()) {
            result.problems.push_back(removal.problem);
        }
    }
    const auto after = available(deletions);
    result.gained = before && after ? std::optional<std::uint64_t>(0) : std::nullopt;
    for (const auto& [volume, now] : result.gained ? *after : std::map<std::string, std::uint64_t>()) {
        const auto then = before->find(volume);
        *result.gained += then != before->end() && now > then->second ? now - then->second : 0;
    }
    countAgain();
    return result;
}

} // namespace vantor
