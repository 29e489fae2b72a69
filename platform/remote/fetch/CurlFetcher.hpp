// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/CurlTransfer.hpp"

#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

namespace vantor::platform::remote {

/// Asks with libcurl: one thread, one multi handle, connections kept open between questions; at most 32 of
/// them, two to one host. A question's time begins when its turn comes.
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
    void beginWaiting();
    void begin(Question question);
    void finishEnded();
    [[nodiscard]] bool takeQuestions();

    CurlLibrary m_library;
    CURLM* m_multi;
    std::mutex m_mutex;
    std::vector<Question> m_questions; ///< not begun
    bool m_isEnding = false;
    std::deque<Question> m_waiting; ///< for a connection; the thread's own, as what follows
    std::unordered_map<CURL*, std::unique_ptr<CurlTransfer>> m_transfers;
    std::thread m_thread;
};

} // namespace vantor::platform::remote
