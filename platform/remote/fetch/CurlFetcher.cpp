// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/CurlFetcher.hpp"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr std::size_t mostConnections = 32;
constexpr long mostToOneHost = 2;
constexpr int idleMilliseconds = 60000; // it is woken for each question

} // namespace

CurlFetcher::CurlFetcher(const CurlLibrary& library) : m_library(library), m_multi(m_library.multiInit()) {
    m_library.multiSetopt(m_multi, CURLMOPT_MAX_TOTAL_CONNECTIONS, static_cast<long>(mostConnections));
    m_library.multiSetopt(m_multi, CURLMOPT_MAXCONNECTS, static_cast<long>(mostConnections));
    m_library.multiSetopt(m_multi, CURLMOPT_MAX_HOST_CONNECTIONS, mostToOneHost);
    // Signals are the main thread's: a new thread takes over what is blocked where it is made.
    sigset_t all{};
    sigset_t before{};
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &before);
    m_thread = std::thread([this] { run(); });
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

CurlFetcher::~CurlFetcher() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_library.multiWakeup(m_multi);
    m_thread.join();
    for (const auto& [easy, transfer] : m_transfers) {
        m_library.multiRemoveHandle(m_multi, easy);
    }
    m_transfers.clear();
    m_library.multiCleanup(m_multi);
}

void CurlFetcher::fetch(FetchRequest request, Done done) {
    {
        const std::lock_guard lock(m_mutex);
        m_questions.push_back({std::move(request), std::move(done)});
    }
    m_library.multiWakeup(m_multi);
}

/// False where it is time to end.
bool CurlFetcher::takeQuestions() {
    const std::lock_guard lock(m_mutex);
    std::ranges::move(m_questions, std::back_inserter(m_waiting));
    m_questions.clear();
    return !m_isEnding;
}

/// What libcurl holds back itself costs time with each of its steps, and its patience runs out unasked.
void CurlFetcher::beginWaiting() {
    while (!m_waiting.empty() && m_transfers.size() < mostConnections) {
        Question question = std::move(m_waiting.front());
        m_waiting.pop_front();
        begin(std::move(question));
    }
}

void CurlFetcher::begin(Question question) {
    auto transfer =
        std::make_unique<CurlTransfer>(m_library, std::move(question.request), std::move(question.done));
    CURL* const easy = transfer->handle();
    if (easy == nullptr || m_library.multiAddHandle(m_multi, easy) != CURLM_OK) {
        transfer->fail("no memory is left");
        return;
    }
    m_transfers.emplace(easy, std::move(transfer));
}

void CurlFetcher::finishEnded() {
    int left = 0;
    while (const CURLMsg* const message = m_library.multiInfoRead(m_multi, &left)) {
        CURL* const easy = message->easy_handle;
        const CURLcode code = message->data.result; // the message goes with its handle
        m_library.multiRemoveHandle(m_multi, easy);
        const auto transfer = m_transfers.find(easy);
        if (transfer->second->ended(code) && m_library.multiAddHandle(m_multi, easy) == CURLM_OK) {
            continue;
        }
        m_transfers.erase(transfer);
    }
}

void CurlFetcher::run() {
    while (takeQuestions()) {
        beginWaiting();
        int running = 0;
        m_library.multiPerform(m_multi, &running);
        finishEnded();
        const bool hasRoom = !m_waiting.empty() && m_transfers.size() < mostConnections;
        m_library.multiPoll(m_multi, nullptr, 0, hasRoom ? 0 : idleMilliseconds, nullptr);
    }
}

std::unique_ptr<Fetcher> openFetcher(std::string& problem) {
    CurlLibrary library;
    return library.open(problem) ? std::make_unique<CurlFetcher>(library) : nullptr;
}

} // namespace vantor::platform::remote
