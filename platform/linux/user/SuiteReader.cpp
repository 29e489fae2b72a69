// SPDX-License-Identifier: MIT
#include "platform/linux/user/SuiteReader.hpp"

#include "platform/linux/kernel/KernelFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <utility>

namespace vantor::platform::linux {

namespace {

constexpr int attempts = 3;

int openQuietly(const char* path) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const auto open = [path](int mark) {
        return posix::uninterrupted([path, mark] { return ::open(path, flags | mark); });
    };
    const int number = open(O_NOATIME); // only the owner may ask for that
    return number < 0 && errno == EPERM ? open(0) : number;
}

/// A file that another took the place of meanwhile loses a name, which moves its change time, but not its
/// content: what was read of it is the whole of what stood there when it was opened.
bool sameState(const struct stat& a, const struct stat& b) {
    const auto same = [](const timespec& x, const timespec& y) {
        return x.tv_sec == y.tv_sec && x.tv_nsec == y.tv_nsec;
    };
    const bool replaced = b.st_nlink < a.st_nlink;
    return a.st_size == b.st_size && same(a.st_mtim, b.st_mtim) && (replaced || same(a.st_ctim, b.st_ctim));
}

/// The bytes up to the file's size and one more, which tells a file that grew; an errno value.
int readAll(int descriptor, std::size_t size, std::string& content) {
    content.resize(size + 1);
    std::size_t length = 0;
    while (length < content.size()) {
        const ssize_t got = posix::uninterrupted(
            [&] { return ::read(descriptor, content.data() + length, content.size() - length); });
        if (got < 0) {
            return errno;
        }
        if (got == 0) {
            break;
        }
        length += static_cast<std::size_t>(got);
        if (length == size) {
            break; // the state afterwards tells whether more came
        }
    }
    content.resize(length);
    return 0;
}

enum class Outcome { whole, changed, unusable };

Outcome readOnce(int descriptor, std::string& content, std::string& reason) {
    struct stat before {};
    struct stat after {};
    if (::fstat(descriptor, &before) != 0) {
        reason = posix::errorText(errno);
        return Outcome::unusable;
    }
    if (!S_ISREG(before.st_mode)) {
        reason = "is not a regular file";
        return Outcome::unusable;
    }
    if (static_cast<std::uint64_t>(before.st_size) >= suiteFileLimit) {
        reason = "is not under 1 MiB";
        return Outcome::unusable;
    }
    const auto size = static_cast<std::size_t>(before.st_size);
    if (const int error = readAll(descriptor, size, content); error != 0) {
        reason = posix::errorText(error);
        return Outcome::unusable;
    }
    if (::fstat(descriptor, &after) != 0 || content.size() != size || !sameState(before, after)) {
        reason = "changes while it is read";
        return Outcome::changed;
    }
    return Outcome::whole;
}

} // namespace

SuiteFile readSuiteFile(const char* path) {
    SuiteFile file;
    for (int i = 0; i < attempts; ++i) {
        const posix::Descriptor descriptor(openQuietly(path));
        const int error = errno;
        if (!descriptor.isOpen() && (error == ENOENT || error == ENOTDIR)) {
            return {};
        }
        file.exists = true;
        file.path = path;
        if (!descriptor.isOpen()) {
            file.reason = posix::errorText(error);
            return file;
        }
        const Outcome outcome = readOnce(descriptor.number(), file.content, file.reason);
        if (outcome == Outcome::whole) {
            file.reason.clear();
            file.usable = true;
            return file;
        }
        if (outcome == Outcome::unusable) {
            break;
        }
    }
    file.content.clear();
    return file;
}

std::string suitePath(const posix::UserFolders& folders, std::string_view suiteName) {
    if (!folders.suiteFile.empty()) {
        return folders.suiteFile;
    }
    if (folders.config.empty() || suiteName.empty() || suiteName.find('/') != std::string_view::npos) {
        return {};
    }
    constexpr std::string_view folder = "/vantor/", ending = ".plist";
    std::string path;
    path.reserve(folders.config.size() + folder.size() + suiteName.size() + ending.size());
    return path.append(folders.config).append(folder).append(suiteName).append(ending);
}

} // namespace vantor::platform::linux
