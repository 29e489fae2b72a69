// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/VolumeQuery.hpp"

#include "platform/posix/Descriptor.hpp"

#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace vantor::platform::linux {

namespace {

std::optional<VolumeFigures> figuresFrom(const struct statvfs& about) {
    const std::uint64_t block = about.f_frsize != 0 ? about.f_frsize : about.f_bsize;
    const std::uint64_t blocks = about.f_blocks;
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (blocks == 0 || block == 0 || blocks > most / block) {
        return std::nullopt;
    }
    const std::uint64_t free = std::min<std::uint64_t>(about.f_bfree, blocks);
    const std::uint64_t available = std::min<std::uint64_t>(about.f_bavail, free);
    const std::uint64_t reserved = free - available;
    const auto bytes = [block](std::uint64_t count) { return static_cast<std::int64_t>(count * block); };
    return VolumeFigures{bytes(blocks - reserved), bytes(available), bytes(reserved), about.f_fsid};
}

/// Makes the call for the path, or for the nearest folder above it that is there; an errno value. A documents
/// folder may have been deleted, and its volume is still the one that it would be on.
template<class Call>
int askNearest(const std::string& path, const Call& call) {
    const auto ask = [&call](const std::string& at) {
        return posix::uninterrupted([&] { return call(at.c_str()); }) == 0 ? 0 : errno;
    };
    int error = ask(path);
    if (error != ENOENT) {
        return error;
    }
    for (std::string above = path; error == ENOENT && above != "/";) {
        const std::size_t slash = above.find_last_of('/');
        if (slash == std::string::npos) {
            break;
        }
        above.resize(std::max<std::size_t>(slash, 1));
        error = ask(above);
    }
    return error;
}

} // namespace

VolumeAnswer queryVolume(const std::string& path) {
    VolumeAnswer answer;
    struct statvfs about {};
    const auto call = [&about](const char* name) { return ::statvfs(name, &about); };
    if (const int error = askNearest(path, call); error != 0) {
        answer.reason = path + ": " + posix::errorText(error);
        return answer;
    }
    answer.figures = figuresFrom(about);
    if (!answer.figures) {
        answer.reason = path + ": the volume has no size";
    }
    return answer;
}

} // namespace vantor::platform::linux
