// SPDX-License-Identifier: MIT
#include "platform/posix/FileReplacement.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/WriteWhole.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>

namespace vantor::platform::posix {

namespace {

constexpr int mostLinks = 40; // as the kernel has it
constexpr std::chrono::seconds patience{5};
constexpr const char* notAbsolute = ": is no absolute path";

std::string reason(const std::string& path, int error) {
    return path + ": " + errorText(error);
}

/// The folder of an absolute path, with the slash at its end.
std::string folderOf(const std::string& path) {
    return path.substr(0, path.find_last_of('/') + 1);
}

/// Where the links at a path's end lead to, and what is there.
struct Target {
    std::string path;
    std::string problem;
    bool exists = false;
    struct stat about {};
};

/// Step by step, since the kernel would follow anybody's link.
Target targetOf(const std::string& path) {
    Target target;
    target.path = path;
    for (int links = 0; links <= mostLinks; ++links) {
        if (target.path.starts_with("/proc/")) { // its links lead to what has no path, such as a pipe
            target.exists = true;
            target.problem = ::stat(target.path.c_str(), &target.about) != 0 ? reason(path, errno) : "";
            target.about.st_mode = S_IFCHR;
            return target;
        }
        if (::lstat(target.path.c_str(), &target.about) != 0) {
            target.problem = errno != ENOENT ? reason(path, errno) : "";
            return target;
        }
        if (!S_ISLNK(target.about.st_mode)) {
            target.exists = true;
            return target;
        }
        if (target.about.st_uid != ::geteuid() && target.about.st_uid != 0) {
            target.problem = path + ": is a link of another user's";
            return target;
        }
        std::array<char, PATH_MAX> leadsTo{};
        const ssize_t length = ::readlink(target.path.c_str(), leadsTo.data(), leadsTo.size());
        if (length < 0 || length == leadsTo.size()) {
            target.problem = reason(path, length < 0 ? errno : ENAMETOOLONG);
            return target;
        }
        const std::string next(leadsTo.data(), static_cast<std::size_t>(length));
        target.path = next.starts_with('/') ? next : folderOf(target.path) + next;
    }
    target.problem = reason(path, ELOOP);
    return target;
}

int writeInto(const std::string& path, std::string_view content) {
    // Without waiting: a pipe that nobody reads would hold the program up.
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    return file.isOpen() ? writeWhole(file.number(), content, patience) : errno;
}

/// A new file beside the target; its name says whose it is and is short, however long the target's is.
Descriptor openBeside(const std::string& path, mode_t mode, std::string& name) {
    constexpr int attempts = 64; // a program that ended in between leaves one behind
    for (int i = 0; i < attempts; ++i) {
        name = folderOf(path) + ".vantor-" + std::to_string(::getpid()) + '-' + std::to_string(i);
        Descriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (file.isOpen() || errno != EEXIST) {
            return file;
        }
    }
    return Descriptor();
}

int fill(const Descriptor& file, const Target& target, std::string_view content) {
    if (target.exists && ::fchmod(file.number(), target.about.st_mode & 0777U) != 0) {
        return errno;
    }
    if (const int error = writeWhole(file.number(), content, patience); error != 0) {
        return error;
    }
    // Some file systems cannot: EINVAL.
    return ::fdatasync(file.number()) != 0 && errno != EINVAL ? errno : 0;
}

int replace(const Target& target, std::string_view content, mode_t mode) {
    if (target.exists && S_ISDIR(target.about.st_mode)) {
        return EISDIR;
    }
    if (target.exists && ::faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) != 0) {
        return errno; // a file that its owner protected is not to be replaced either
    }
    std::string fresh;
    Descriptor file = openBeside(target.path, mode, fresh);
    if (!file.isOpen()) {
        return errno;
    }
    int error = fill(file, target, content);
    file.reset();
    if (error == 0 && ::rename(fresh.c_str(), target.path.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(fresh.c_str());
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
    const Target target = targetOf(path);
    if (!target.problem.empty()) {
        return target.problem;
    }
    if (target.exists && S_ISBLK(target.about.st_mode)) {
        return path + ": is a disk";
    }
    const bool isFile = !target.exists || S_ISREG(target.about.st_mode) || S_ISDIR(target.about.st_mode);
    const int error = isFile ? replace(target, content, mode) : writeInto(target.path, content);
    return error != 0 ? std::optional(reason(path, error)) : std::nullopt;
}

std::optional<std::string> makeFoldersTo(const std::string& path) {
    if (!path.starts_with('/')) {
        return path + notAbsolute;
    }
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), 0700) == 0) {
            continue;
        }
        const int error = errno;
        struct stat about {};
        // Existing folders answer EEXIST, EROFS or EACCES, depending on what the kernel looks at first.
        if (::stat(folder.c_str(), &about) != 0 || !S_ISDIR(about.st_mode)) {
            return reason(folder, error == EEXIST ? ENOTDIR : error);
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform::posix
