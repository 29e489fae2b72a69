// SPDX-License-Identifier: MIT
#include "hosts/common/LinkOpener.hpp"

#include "hosts/common/ChildProcess.hpp"
#include "platform/posix/Environment.hpp"
#include "platform/time/RunLoop.hpp"

#include <unistd.h>

#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

namespace {

constexpr std::chrono::seconds longestOpen{3}; // then it is the link's own program that runs on

bool hasDesktop() {
    return !platform::posix::environmentText("DISPLAY").empty() ||
           !platform::posix::environmentText("WAYLAND_DISPLAY").empty();
}

std::string installedProgram(std::string_view name) {
    for (const char* const folder : {"/usr/bin/", "/usr/local/bin/", "/bin/"}) {
        std::string path = folder + std::string(name);
        if (::access(path.c_str(), X_OK) == 0) {
            return path;
        }
    }
    return {};
}

} // namespace

/// What the threads share with their opener, and outlives it.
struct LinkOpener::Lookups {
    std::map<std::string, std::vector<Finished>> waiting; ///< for which link; the main thread's

    std::mutex mutex; ///< guards what follows
    bool isOver = false;

    /// Absent once the opener is gone.
    std::optional<ChildProcess> start(const std::string& program, const std::string& link,
                                      const std::vector<std::string>& environment) {
        const std::scoped_lock lock(mutex);
        return isOver ? std::nullopt : ChildProcess::start(program, {link}, environment);
    }
    void end() {
        waiting.clear();
        const std::scoped_lock lock(mutex);
        isOver = true;
    }
    void conclude(const std::string& link, bool opened) {
        for (const Finished& finished : std::exchange(waiting[link], {})) {
            if (finished) {
                finished(opened);
            }
        }
        waiting.erase(link);
    }
};

namespace {

using SharedLookups = std::shared_ptr<LinkOpener::Lookups>;

/// What a thread goes by, as it was on the main thread: that may be setting a variable by now.
struct Task {
    SharedLookups lookups;
    LinkOpener::Programs programs;
    std::string link; ///< or a scheme alone
    std::vector<std::string> environment = platform::posix::wholeEnvironment();
};

void postConclusion(const Task& task, bool opened) {
    platform::RunLoop::main().post(
        [lookups = task.lookups, link = task.link, opened] { lookups->conclude(link, opened); });
}

bool hasProgram(const Task& task) {
    return task.programs.handlers.haveScheme(task.link.substr(0, task.link.find(':')));
}

/// What a lookup's thread does.
void lookUp(const Task& task) {
    std::optional<ChildProcess> opener;
    if (hasProgram(task)) {
        opener = task.lookups->start(task.programs.open, task.link, task.environment);
    }
    if (!opener) {
        postConclusion(task, false);
        return;
    }
    const std::optional<bool> endedWell = opener->wait(longestOpen);
    postConclusion(task, endedWell.value_or(true));
    if (!endedWell) {
        opener->waitForEnd();
    }
}

/// As a work item, so that what the loop is told by it counts for the same machine and viewer. False where
/// there are no more threads.
bool inBackground(std::function<void()> work) {
    try {
        std::thread(platform::WorkItem(std::move(work))).detach();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace

LinkOpener::LinkOpener(Programs programs)
    : m_programs(std::move(programs)), m_lookups(std::make_shared<Lookups>()) {}

LinkOpener::~LinkOpener() {
    m_lookups->end();
}

bool LinkOpener::canOpen() const {
    return hasDesktop() && !m_programs.open.empty();
}

void LinkOpener::open(const platform::NSURL& url, Finished finished) {
    const std::string& link = url.absoluteString();
    std::vector<Finished>& waiting = m_lookups->waiting[link];
    waiting.push_back(std::move(finished));
    if (waiting.size() > 1) {
        return; // it is being opened
    }
    const Task task{m_lookups, m_programs, link};
    if (!canOpen() || !inBackground([task] { lookUp(task); })) {
        postConclusion(task, false);
    }
}

void LinkOpener::ask(const std::string& scheme, std::function<void(bool)> heard) {
    std::vector<Finished>& waiting = m_lookups->waiting[scheme];
    waiting.push_back(std::move(heard));
    if (waiting.size() > 1) {
        return;
    }
    const Task task{m_lookups, m_programs, scheme};
    if (!inBackground([task] { postConclusion(task, hasProgram(task)); })) {
        postConclusion(task, true); // a press will tell
    }
}

LinkOpener::Programs LinkOpener::Programs::installed() {
    return {installedProgram("xdg-open"), LinkHandlers::fromEnvironment()};
}

} // namespace vantor::hosts::common
