// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/CurlTransfer.hpp"

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace vantor::platform::remote {

/// Asks with libcurl: one thread, one multi handle, connections kept open between questions; at most 32 of
/// them, two to one host, and half of them for servers that were silent the last time. While others wait, a
/// server that has sent nothing for a fifth of its patience counts no longer, up to 128 connections in all.
/// Other questions wait here, not in libcurl, which would count their time and look at each of them again and
/// again.
class CurlFetcher final : public Fetcher {
public:
    /// The library must have been opened.
    explicit CurlFetcher(const CurlLibrary& library);
    ~CurlFetcher() override;

    void fetch(FetchRequest request, Done done) override;

private:
    struct Question {
        FetchRequest request;
        Done done;
    };

    void run();
    void sort(std::vector<Question> questions);
    void beginWaiting();
    void begin(Question question);
    [[nodiscard]] CURL* freeHandle();
    [[nodiscard]] long nameSeconds();
    [[nodiscard]] bool isItsTurn(const FetchRequest& request) const;
    void endTurn(const FetchRequest& request);
    void finishEnded();
    [[nodiscard]] bool hasRoom() const;
    [[nodiscard]] bool hasRoomForDoubtful() const;
    [[nodiscard]] std::chrono::milliseconds giveUpPlaces();
    [[nodiscard]] bool takeQuestions(std::vector<Question>& questions);

    CurlLibrary m_library;
    CURLM* m_multi;
    std::mutex m_mutex;
    std::vector<Question> m_questions; ///< not begun
    bool m_isEnding = false;
    // What follows is the thread's own.
    std::deque<Question> m_waiting; ///< for a connection
    std::deque<Question> m_waitingDoubtful;
    std::deque<Question> m_held;  ///< for the end of another to their origin
    std::set<std::string> m_busy; ///< origins that are asked one question at a time, and are
    std::unordered_map<CURL*, std::unique_ptr<CurlTransfer>> m_transfers;
    std::size_t m_doubtful = 0;                          ///< of them
    std::size_t m_slow = 0;                              ///< of them; they have given up their places
    std::chrono::steady_clock::time_point m_namesLooked; ///< through, for old ones
    std::vector<CURL*> m_unused; ///< handles: making one takes longer than a short exchange on loopback
    std::thread m_thread;
};

} // namespace vantor::platform::remote
