// SPDX-License-Identifier: MIT
#include "platform/linux/user/SuiteWriter.hpp"

#include "platform/linux/user/LeftBehind.hpp"
#include "platform/linux/user/SuiteReader.hpp"
#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <optional>
#include <system_error>
#include <thread>

namespace vantor::platform::linux {

namespace {

namespace fs = std::filesystem;

SuiteChange failed(std::string reason) {
    return {.failure = std::move(reason)};
}

SuiteChange nothing(SuiteEdit edit) {
    return {.failure = std::move(edit.refusal), .couldBeSetAside = edit.couldBeSetAside};
}

/// The file that a path leads to, so that writers who come by different links share one lock.
std::string fileBehind(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::path target = fs::weakly_canonical(absolute, error);
    return (error ? absolute : target).string();
}

/// Held until the descriptor goes, by a crash too. False where it could not be had.
bool lock(const posix::Descriptor& folder, std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds pause{2};
    const Clock::time_point end = Clock::now() + patience;
    int failed = ::flock(folder.number(), LOCK_EX | LOCK_NB);
    while (failed != 0 && (errno == EWOULDBLOCK || errno == EINTR) && Clock::now() < end) {
        std::this_thread::sleep_for(pause);
        failed = ::flock(folder.number(), LOCK_EX | LOCK_NB);
    }
    return failed == 0;
}

/// The day in universal time, "2024-05-01".
std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm day{};
    ::gmtime_r(&now, &day);
    std::string text(sizeof "YYYY-MM-DD", '\0');
    text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%d", &day));
    return text;
}

/// Gives the file a second name, so that it is never without one. Absent with the reason in `problem`.
std::optional<std::string> keepBeside(const std::string& path, std::string& problem) {
    constexpr int mostADay = 100;
    const std::string stem = path + ".broken-" + today();
    int error = EEXIST;
    for (int i = 1; i <= mostADay && error == EEXIST; ++i) {
        const std::string name = i == 1 ? stem : stem + '.' + std::to_string(i);
        if (::link(path.c_str(), name.c_str()) == 0) {
            return name;
        }
        error = errno;
        // Some file systems have no second names: there the file is without one until the new one comes.
        const bool hasNoLinks = error == EPERM || error == EOPNOTSUPP || error == ENOSYS;
        if (hasNoLinks && ::access(name.c_str(), F_OK) != 0 && ::rename(path.c_str(), name.c_str()) == 0) {
            return name;
        }
    }
    problem = stem + ": " + posix::errorText(error);
    return std::nullopt;
}

} // namespace

SuiteChange changeSuiteFile(const std::string& path, const SuiteEditor& edit,
                            std::chrono::milliseconds patience) {
    if (path.empty()) {
        return failed("there is no home folder for the preferences");
    }
    std::error_code noWorkingFolder;
    const std::string named = fs::absolute(path, noWorkingFolder).string();
    if (noWorkingFolder) {
        return failed(path + ": " + noWorkingFolder.message());
    }
    // Folders are not made for an edit that writes nothing.
    const SuiteFile first = readSuiteFile(named.c_str());
    if (!first.exists) {
        SuiteEdit made = edit(first);
        if (!made.content) {
            return nothing(std::move(made));
        }
    }
    if (std::optional<std::string> problem = posix::makeFoldersTo(named)) {
        return failed(std::move(*problem));
    }
    const std::string file = fileBehind(named);
    const std::string folderPath = fs::path(file).parent_path().string();
    const posix::Descriptor folder(::open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen()) {
        return failed(folderPath + ": " + posix::errorText(errno));
    }
    const bool isLocked = lock(folder, patience);
    SuiteEdit made = edit(readSuiteFile(named.c_str()));
    if (!made.content) {
        return nothing(std::move(made));
    }
    SuiteChange change;
    if (made.setAside) {
        std::string problem;
        const std::optional<std::string> kept = keepBeside(file, problem);
        if (!kept) {
            return failed(std::move(problem));
        }
        change.setAside = *kept;
    }
    if (isLocked) {
        removeLeftBehind(folder.number());
    }
    // By the name that was given: whose link stands there is looked at again.
    change.failure = posix::replaceFile(named, *made.content);
    if (!change.failure && ::fsync(folder.number()) != 0 && errno != EINVAL && errno != EROFS) {
        change.failure = folderPath + ": " + posix::errorText(errno);
    }
    change.changed = !change.failure;
    return change;
}

} // namespace vantor::platform::linux
