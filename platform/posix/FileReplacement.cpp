// SPDX-License-Identifier: MIT
#include "platform/posix/FileReplacement.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FilePlace.hpp"
#include "platform/posix/WriteWhole.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>

namespace vantor::platform::posix {

namespace {

constexpr std::chrono::seconds patience{5};
constexpr const char* notAbsolute = ": is no absolute path";

std::string reason(const std::string& path, int error) {
    return path + ": " + errorText(error);
}

int writeInto(const FilePlace& place, std::string_view content) {
    // Without waiting: a pipe that nobody reads would hold the program up.
    const int flags = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | (place.isKernels ? 0 : O_NOFOLLOW);
    const Descriptor file(::openat(place.folder.number(), place.name.c_str(), flags));
    return file.isOpen() ? writeWhole(file.number(), content, patience) : errno;
}

/// A new file beside the target; its name says whose it is and is short, however long the target's is.
Descriptor openBeside(const FilePlace& place, mode_t mode, std::string& name) {
    constexpr int attempts = 64; // a program that ended in between leaves one behind
    for (int i = 0; i < attempts; ++i) {
        name = std::string(unfinishedPrefix) + std::to_string(::getpid()) + '-' + std::to_string(i);
        Descriptor file(::openat(place.folder.number(), name.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (file.isOpen()) {
            (void)::flock(file.number(),
                          LOCK_EX | LOCK_NB); // where there are no locks, nobody clears away either
            return file;
        }
        if (errno != EEXIST) {
            return file;
        }
    }
    return Descriptor();
}

int fill(const Descriptor& file, const FilePlace& place, std::string_view content) {
    if (place.exists && ::fchmod(file.number(), place.about.st_mode & 0777U) != 0) {
        return errno;
    }
    if (const int error = writeWhole(file.number(), content, patience); error != 0) {
        return error;
    }
    // Some file systems cannot: EINVAL.
    return ::fdatasync(file.number()) != 0 && errno != EINVAL ? errno : 0;
}

int replace(const FilePlace& place, std::string_view content, mode_t mode) {
    const int folder = place.folder.number();
    if (place.exists && S_ISDIR(place.about.st_mode)) {
        return EISDIR;
    }
    if (place.exists && ::faccessat(folder, place.name.c_str(), W_OK, AT_EACCESS) != 0) {
        return errno; // a file that its owner protected is not to be replaced either
    }
    std::string fresh;
    const Descriptor file = openBeside(place, mode, fresh);
    if (!file.isOpen()) {
        return errno;
    }
    int error = fill(file, place, content);
    if (error == 0 && ::renameat(folder, fresh.c_str(), folder, place.name.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlinkat(folder, fresh.c_str(), 0);
    }
    return error;
}

} // namespace

std::optional<std::string> replaceFile(const std::string& path, std::string_view content, mode_t mode) {
    if (!path.starts_with('/')) {
        return path + notAbsolute;
    }
    if (path.find('\0') != std::string::npos) {
        return reason(path, EINVAL);
    }
    const FilePlace place = findPlace(path, MissingFolders::areAProblem);
    if (!place.problem.empty()) {
        return place.problem;
    }
    const mode_t kind = place.about.st_mode;
    if (place.exists && S_ISBLK(kind)) {
        return path + ": is a disk";
    }
    const bool isFile = !place.exists || (!place.isKernels && (S_ISREG(kind) || S_ISDIR(kind)));
    const int error = isFile ? replace(place, content, mode) : writeInto(place, content);
    return error != 0 ? std::optional(reason(path, error)) : std::nullopt;
}

std::optional<std::string> makeFoldersTo(const std::string& path) {
    if (!path.starts_with('/')) {
        return path + notAbsolute;
    }
    const std::string folder = path.substr(0, path.find_last_of('/') + 1);
    const FilePlace place = findPlace(folder, MissingFolders::areMade);
    return place.problem.empty() ? std::nullopt : std::optional(place.problem);
}

} // namespace vantor::platform::posix
