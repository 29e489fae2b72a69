// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeWaiter.hpp"

#include "platform/time/DispatchQueue.hpp"

#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>

namespace vantor::platform::linux {

namespace {

static_assert(std::is_trivially_copyable_v<VolumeFigures>,
              "they come as they are from a copy of this process");

std::string encoded(const VolumeAnswer& answer) {
    if (!answer.figures) {
        return answer.reason;
    }
    std::string bytes(1 + sizeof(VolumeFigures), '\0'); // no reason begins with zero
    std::memcpy(bytes.data() + 1, &*answer.figures, sizeof(VolumeFigures));
    return bytes;
}

VolumeAnswer decoded(std::string_view bytes) {
    VolumeAnswer answer;
    if (bytes.front() != '\0') {
        answer.reason = bytes;
    } else if (bytes.size() == 1 + sizeof(VolumeFigures)) {
        std::memcpy(&answer.figures.emplace(), bytes.data() + 1, sizeof(VolumeFigures));
    }
    return answer;
}

} // namespace

VolumeAnswer VolumeWaiter::ask(const std::string& path) {
    const auto failed = [&path](const char* why) { return VolumeAnswer{std::nullopt, path + ": " + why}; };
    if (m_child.isBusy()) {
        return failed("the volume does not answer");
    }
    dispatch_will_wait();
    const std::optional<std::string> answer =
        m_child.run([&path] { return encoded(queryVolume(path)); }, limit);
    if (answer) {
        return decoded(*answer);
    }
    return failed(m_child.isBusy() ? "the volume did not answer within a second"
                                   : "no process to ask for the volume with");
}

} // namespace vantor::platform::linux
