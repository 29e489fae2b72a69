// SPDX-License-Identifier: MIT
#include "hosts/common/LinkOpener.hpp"

#include "hosts/common/ChildProcess.hpp"
#include "platform/posix/Environment.hpp"
#include "platform/time/RunLoop.hpp"

#include <unistd.h>

#include <csignal>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

using std::chrono::seconds;

namespace {

constexpr seconds longestQuery{10}; // a cold disk takes some
constexpr seconds longestOpen{3};   // then it is the link's own program that runs on

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
    std::set<pid_t> queries; ///< that run

    /// Absent once the opener is gone.
    std::optional<ChildProcess> start(const std::string& program, const std::vector<std::string>& arguments,
                                      ChildProcess::Output output) {
        const std::scoped_lock lock(mutex);
        std::optional<ChildProcess> child;
        if (!isOver) {
            child = ChildProcess::start(program, arguments, output);
        }
        if (child && output == ChildProcess::Output::read) {
            queries.insert(child->number());
        }
        return child;
    }
    void forget(const ChildProcess& query) {
        const std::scoped_lock lock(mutex);
        queries.erase(query.number());
    }
    void end() {
        waiting.clear();
        const std::scoped_lock lock(mutex);
        isOver = true;
        for (const pid_t query : queries) {
            ::kill(-query, SIGKILL);
        }
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

/// Whether a program is registered for the scheme of a link, or for a scheme alone.
bool hasProgram(const SharedLookups& lookups, const std::string& query, const std::string& link) {
    const std::string kind = "x-scheme-handler/" + link.substr(0, link.find(':'));
    const std::optional<ChildProcess> child =
        lookups->start(query, {"query", "default", kind}, ChildProcess::Output::read);
    if (!child) {
        return false;
    }
    const std::optional<std::string> answer = child->readOutput(longestQuery);
    lookups->forget(*child); // while its number is still its own
    if (!answer) {
        ::kill(-child->number(), SIGKILL);
    }
    child->waitForEnd();
    return answer && answer->find_first_not_of(" \n") != std::string::npos;
}

void postConclusion(const SharedLookups& lookups, const std::string& link, bool opened) {
    platform::RunLoop::main().post([lookups, link, opened] { lookups->conclude(link, opened); });
}

/// What a lookup's thread does.
void lookUp(const SharedLookups& lookups, const LinkOpener::Programs& programs, const std::string& link) {
    std::optional<ChildProcess> opener;
    if (programs.query.empty() || hasProgram(lookups, programs.query, link)) {
        opener = lookups->start(programs.open, {link}, ChildProcess::Output::dropped);
    }
    if (!opener) {
        postConclusion(lookups, link, false);
        return;
    }
    const std::optional<bool> endedWell = opener->wait(longestOpen);
    postConclusion(lookups, link, endedWell.value_or(true));
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
    if (!canOpen()) {
        postConclusion(m_lookups, link, false);
        return;
    }
    if (!inBackground(
            [lookups = m_lookups, programs = m_programs, link] { lookUp(lookups, programs, link); })) {
        postConclusion(m_lookups, link, false);
    }
}

void LinkOpener::ask(const std::string& scheme, std::function<void(bool)> heard) {
    std::vector<Finished>& waiting = m_lookups->waiting[scheme];
    waiting.push_back(std::move(heard));
    const auto query = [lookups = m_lookups, program = m_programs.query, scheme] {
        postConclusion(lookups, scheme, hasProgram(lookups, program, scheme));
    };
    if (waiting.size() == 1 && (!hasDesktop() || m_programs.query.empty() || !inBackground(query))) {
        postConclusion(m_lookups, scheme, true);
    }
}

LinkOpener::Programs LinkOpener::Programs::installed() {
    return {installedProgram("xdg-mime"), installedProgram("xdg-open")};
}

} // namespace vantor::hosts::common
