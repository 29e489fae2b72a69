// SPDX-License-Identifier: MIT
#include "platform/linux/ReleasableScan.hpp"

#include "platform/linux/KeptReleasable.hpp"
#include "platform/linux/VolumeQuery.hpp"
#include "platform/linux/kernel/FolderWalk.hpp"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vantor::platform::linux {

namespace {

using std::chrono::seconds;
constexpr seconds keptAtMost = std::chrono::hours(7 * 24);

/// For this thread alone: on Linux, nice values and I/O priorities belong to threads.
void takeLowestPriority() {
    constexpr int whoProcess = 1, idleClass = 3,
                  classShift = 13; // ioprio_set(2); the C library has no wrapper
    ::syscall(SYS_ioprio_set, whoProcess, 0, idleClass << classShift);
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::syscall(SYS_gettid)), 19);
}

seconds wallClock() {
    return std::chrono::duration_cast<seconds>(std::chrono::system_clock::now().time_since_epoch());
}

/// The folder at the top of the file system that holds a path: there, other disks keep their trash.
std::string topFolder(std::string path, dev_t fileSystem) {
    while (path.size() > 1) {
        const std::string above = path.substr(0, std::max<std::size_t>(path.find_last_of('/'), 1));
        struct stat about {};
        if (::stat(above.c_str(), &about) != 0 || about.st_dev != fileSystem) {
            break;
        }
        path = above;
    }
    return path;
}

/// The last scan's result for this volume; absent where it is older than `age`, or from the future.
std::optional<KeptReleasable> keptFor(const std::string& file, std::uint64_t volume, seconds age) {
    const std::optional<KeptReleasable> kept = loadKeptReleasable(file);
    const seconds now = wallClock();
    const bool usable =
        kept && kept->volume == volume && seconds(kept->scanned) <= now && now - seconds(kept->scanned) < age;
    return usable ? kept : std::nullopt;
}

std::optional<std::uint64_t> volumeIdentity(const std::string& path) {
    struct statvfs about {};
    return ::statvfs(path.c_str(), &about) == 0 ? std::optional<std::uint64_t>(about.f_fsid) : std::nullopt;
}

} // namespace

struct ReleasableScan::State {
    posix::UserFolders folders;
    std::string documents;
    ScanPace pace;
    std::string file;
    std::atomic<std::int64_t> bytes{0};
    std::mutex mutex;
    std::condition_variable changed;
    bool stopping = false;
    bool ended = false;
    int entries = 0;

    /// False when the scan is to end; else waited for the time.
    bool sleep(std::chrono::nanoseconds time) {
        std::unique_lock lock(mutex);
        return !changed.wait_for(lock, time, [this] { return stopping; });
    }
    bool keepGoing() { return ++entries % pace.entriesBetweenRests != 0 || sleep(pace.rest); }

    void take(std::uint64_t found) {
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        bytes = static_cast<std::int64_t>(std::min(found, most));
    }
    void scan();
    void run();
};

void ReleasableScan::State::scan() {
    const std::optional<std::uint64_t> volume = volumeIdentity(documents);
    if (!volume) {
        return;
    }
    if (const auto kept = keptFor(file, *volume, pace.interval)) {
        take(kept->bytes);
        return;
    }
    bool whole = true;
    const std::uint64_t found =
        releasableBytes(folders, documents, [this, &whole] { return whole = keepGoing(); });
    if (whole) {
        take(found);
        saveKeptReleasable(file, {*volume, found, wallClock().count()});
    }
}

void ReleasableScan::State::run() {
    takeLowestPriority();
    if (const std::optional<std::uint64_t> volume = volumeIdentity(documents)) {
        if (const auto kept = keptFor(file, *volume, keptAtMost)) {
            bytes = static_cast<std::int64_t>(kept->bytes);
        }
    }
    for (bool going = sleep(pace.firstDelay); going; going = sleep(pace.interval)) {
        scan();
    }
    const std::lock_guard lock(mutex);
    ended = true;
    changed.notify_all();
}

ReleasableScan::ReleasableScan(posix::UserFolders folders, std::string documents, ScanPace pace)
    : m_state(std::make_shared<State>()) {
    m_state->file = folders.cache + "/vantor/releasable";
    m_state->folders = std::move(folders);
    m_state->documents = std::move(documents);
    m_state->pace = pace;
    try {
        std::thread([state = m_state] { state->run(); }).detach();
    } catch (const std::system_error&) { // no thread to be had: nothing counts as releasable
        m_state->ended = true;
    }
}

ReleasableScan::~ReleasableScan() {
    std::unique_lock lock(m_state->mutex);
    m_state->stopping = true;
    m_state->changed.notify_all();
    m_state->changed.wait_for(lock, std::chrono::milliseconds(200), [this] { return m_state->ended; });
}

std::int64_t ReleasableScan::bytes() const {
    return m_state->bytes;
}

std::uint64_t releasableBytes(const posix::UserFolders& folders, const std::string& documents,
                              const std::function<bool()>& keepGoing) {
    struct stat about {};
    if (!isOnLocalFileSystem(documents) || ::stat(documents.c_str(), &about) != 0) {
        return 0;
    }
    const uid_t user = ::getuid();
    const std::string top = topFolder(documents, about.st_dev);
    const std::string own = std::to_string(user);
    FolderWalk walk(about.st_dev, user, keepGoing);
    std::vector<std::string> trash{top, top};
    trash[0].append("/.Trash/").append(own);
    trash[1].append("/.Trash-").append(own);
    if (!folders.data.empty()) {
        trash.push_back(folders.data + "/Trash");
    }
    walk.add(folders.cache);
    for (const std::string& folder : trash) {
        walk.add(folder);
    }
    return walk.bytes();
}

} // namespace vantor::platform::linux
