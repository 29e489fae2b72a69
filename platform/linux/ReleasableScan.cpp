// SPDX-License-Identifier: MIT
#include "platform/linux/ReleasableScan.hpp"

#include "platform/linux/removal/ReleasableCount.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
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
/// What an earlier run kept is there in less than one, unless the cache folder is on a network.
constexpr std::chrono::milliseconds keptWait{100};

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

/// The last scan's result for this volume; absent where it is older than `age`, or from the future.
std::optional<KeptReleasable> keptFor(const std::string& file, std::uint64_t volume, seconds age) {
    const std::optional<KeptReleasable> kept = loadKeptReleasable(file);
    const seconds now = wallClock();
    const bool usable =
        kept && kept->volume == volume && seconds(kept->scanned) <= now && now - seconds(kept->scanned) < age;
    return usable ? kept : std::nullopt;
}

} // namespace

struct ReleasableScan::State {
    posix::UserFolders folders;
    std::string documents;
    ScanPace pace;
    std::shared_ptr<LocalPaths> paths;
    std::string file;
    int entries = 0; // of the thread alone

    std::mutex mutex; // for all below
    std::condition_variable changed;
    bool stopping = false;
    bool ended = false;
    std::optional<std::uint64_t> localVolume; ///< the documents' volume, where the last report found it local
    bool begun = false;                       ///< what an earlier run kept is taken over
    bool awaited = false;
    KeptWatch keptWatch{""};
    std::optional<KeptReleasable> taken;  ///< the last result, as it was found or kept
    std::optional<KeptReleasable> latest; ///< what the reports since have left of it

    /// False when the scan is to end; else waited for the time.
    bool sleep(std::chrono::nanoseconds time) {
        std::unique_lock lock(mutex);
        return !changed.wait_for(lock, time, [this] { return stopping; });
    }
    bool keepGoing() { return ++entries % pace.entriesBetweenRests != 0 || sleep(pace.rest); }

    bool adopt(std::uint64_t volume, seconds age);
    bool begin();
    void scan();
    void run();
};

/// Takes the kept result over; false where there is none of that age, or it may be on a file system that
/// hangs.
bool ReleasableScan::State::adopt(std::uint64_t volume, seconds age) {
    const std::optional<KeptReleasable> kept =
        paths->isLocal(file) ? keptFor(file, volume, age) : std::nullopt;
    const std::lock_guard lock(mutex);
    if (kept && kept != taken && (!latest || latest->volume != volume || kept->scanned >= latest->scanned)) {
        latest = taken = kept;
    }
    return kept.has_value();
}

/// Waits for a report to find the volume local; false when the scan is to end instead.
bool ReleasableScan::State::begin() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return stopping || localVolume; });
    const std::optional<std::uint64_t> volume = localVolume;
    if (stopping) {
        return false;
    }
    lock.unlock();
    adopt(*volume, keptAtMost);
    lock.lock();
    begun = true;
    changed.notify_all();
    return true;
}

void ReleasableScan::State::scan() {
    std::unique_lock lock(mutex);
    const std::optional<std::uint64_t> volume = localVolume;
    lock.unlock();
    if (!volume || !paths->isLocal(documents) || adopt(*volume, pace.interval)) {
        return;
    }
    const std::optional<KeptReleasable> result =
        countAndKeep({.folders = folders, .documents = documents}, *paths, [this] {
            return keepGoing();
        }).kept;
    if (result) {
        lock.lock();
        latest = taken = result;
    }
}

void ReleasableScan::State::run() {
    bool going = begin();
    takeLowestPriority();
    going = going && sleep(pace.firstDelay);
    while (going) {
        scan();
        going = sleep(pace.interval);
    }
    const std::lock_guard lock(mutex);
    ended = true;
    changed.notify_all();
}

ReleasableScan::ReleasableScan(posix::UserFolders folders, std::string documents, ScanPace pace,
                               std::shared_ptr<LocalPaths> paths)
    : m_state(std::make_shared<State>()) {
    m_state->file = keptReleasableFile(folders);
    m_state->keptWatch = KeptWatch(m_state->file);
    m_state->folders = std::move(folders);
    m_state->documents = std::move(documents);
    m_state->pace = pace;
    m_state->paths = std::move(paths);
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

const std::string& ReleasableScan::documents() const {
    return m_state->documents;
}

Releasable ReleasableScan::latest(const VolumeFigures& volume, bool isLocal) {
    State& state = *m_state;
    std::unique_lock lock(state.mutex);
    if (isLocal && !state.localVolume) {
        state.changed.notify_all();
    }
    state.localVolume = isLocal ? std::optional(volume.identity) : std::nullopt;
    if (isLocal && !std::exchange(state.awaited, true)) { // a run of one report is to know it too
        dispatch_will_wait();
        state.changed.wait_for(lock, keptWait, [&state] { return state.begun || state.ended; });
    }
    if (isLocal && state.begun && state.paths->isLocal(state.file) && state.keptWatch.changed()) {
        lock.unlock();
        state.adopt(volume.identity, keptAtMost);
        lock.lock();
    }
    if (!state.latest || state.latest->volume != volume.identity) {
        return {};
    }
    // What is written later takes room again, but brings nothing back that was released.
    Releasable& result = state.latest->result;
    result = {result.left(volume.available), volume.available};
    return result;
}

} // namespace vantor::platform::linux
