// SPDX-License-Identifier: MIT
#include "platform/remote/fetch/CurlFetcher.hpp"

#include "platform/remote/fetch/NodeAddress.hpp"

#include <algorithm>
#include <csignal>
#include <utility>

namespace vantor::platform::remote {

namespace {

using std::chrono::milliseconds;

constexpr std::size_t mostDoubtful = mostConnections / 2;
constexpr std::size_t mostWithSlow = 4 * mostConnections;
constexpr long mostToOneHost = 2;
constexpr milliseconds idle{60000}; // it is woken for questions
constexpr std::chrono::seconds namesHold{60};

} // namespace

CurlFetcher::CurlFetcher(const CurlLibrary& library) : m_library(library), m_multi(m_library.multiInit()) {
    m_library.multiSetopt(m_multi, CURLMOPT_MAX_TOTAL_CONNECTIONS, static_cast<long>(mostWithSlow));
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
    for (auto& [easy, transfer] : m_transfers) {
        transfer.reset();
        m_library.easyCleanup(easy);
    }
    for (CURL* const easy : m_unused) {
        m_library.easyCleanup(easy);
    }
    m_library.multiCleanup(m_multi);
}

void CurlFetcher::fetch(FetchRequest request, Done done) {
    bool isFirst = false;
    {
        const std::lock_guard lock(m_mutex);
        isFirst = m_questions.empty();
        m_questions.push_back({std::move(request), std::move(done)});
    }
    if (isFirst) { // else the thread has been woken, and has not looked yet
        m_library.multiWakeup(m_multi);
    }
}

/// False where it is time to end.
bool CurlFetcher::takeQuestions(std::vector<Question>& questions) {
    const std::lock_guard lock(m_mutex);
    questions = std::exchange(m_questions, {});
    return !m_isEnding;
}

void CurlFetcher::sort(std::vector<Question> questions) {
    for (Question& question : questions) {
        (question.request.isDoubtful ? m_waitingDoubtful : m_waiting).push_back(std::move(question));
    }
}

bool CurlFetcher::isItsTurn(const FetchRequest& request) const {
    return !request.takesTurns || !m_busy.contains(originOf(request.url));
}

void CurlFetcher::endTurn(const FetchRequest& request) {
    if (!request.takesTurns) {
        return;
    }
    m_busy.erase(originOf(request.url));
    const auto next =
        std::ranges::find_if(m_held, [this](const Question& held) { return isItsTurn(held.request); });
    if (next != m_held.end()) {
        m_waiting.push_front(std::move(*next));
        m_held.erase(next);
    }
}

bool CurlFetcher::hasRoom() const {
    return m_transfers.size() < mostWithSlow && m_transfers.size() - m_slow < mostConnections;
}

bool CurlFetcher::hasRoomForDoubtful() const {
    return hasRoom() && m_doubtful < mostDoubtful;
}

/// Who has sent nothing for a while may still answer, but keeps nobody waiting any longer: of a hundred
/// servers of which eighty are silent, the others would be heard only after several times the whole patience.
/// The time until the next one may have to make room.
milliseconds CurlFetcher::giveUpPlaces() {
    if (m_waiting.empty() || m_transfers.size() >= mostWithSlow) {
        return idle;
    }
    const auto now = std::chrono::steady_clock::now();
    milliseconds least = idle;
    for (const auto& [easy, transfer] : m_transfers) {
        constexpr milliseconds lookAgain{100}; // while a name is being looked up
        const auto from = transfer->slowFrom();
        if (from && *from > now) {
            least = std::min(least, std::chrono::ceil<milliseconds>(*from - now));
        } else if (from && transfer->becomeSlow()) {
            ++m_slow;
        } else if (from) {
            least = std::min(least, lookAgain);
        }
    }
    return least;
}

void CurlFetcher::beginWaiting() {
    const auto beginFirst = [this](std::deque<Question>& waiting) {
        Question question = std::move(waiting.front());
        waiting.pop_front();
        if (isItsTurn(question.request)) {
            begin(std::move(question));
        } else {
            m_held.push_back(std::move(question));
        }
    };
    while (hasRoom() && !m_waiting.empty()) {
        beginFirst(m_waiting);
    }
    while (hasRoomForDoubtful() && !m_waitingDoubtful.empty()) {
        beginFirst(m_waitingDoubtful);
    }
}

CURL* CurlFetcher::freeHandle() {
    if (m_unused.empty()) {
        return m_library.easyInit();
    }
    CURL* const easy = m_unused.back();
    m_unused.pop_back();
    return easy;
}

/// Before a transfer libcurl looks through all addresses of names that it keeps, for those that are too old:
/// of a thousand servers, all thousand of them for each. Once a minute is enough. -1: it does not look.
long CurlFetcher::nameSeconds() {
    const auto now = std::chrono::steady_clock::now();
    if (now - m_namesLooked < namesHold) {
        return -1;
    }
    m_namesLooked = now;
    return static_cast<long>(namesHold.count());
}

void CurlFetcher::begin(Question question) {
    CURL* const easy = freeHandle();
    auto transfer = std::make_unique<CurlTransfer>(m_library, easy, std::move(question.request),
                                                   std::move(question.done));
    if (easy != nullptr) {
        m_library.easySetopt(easy, CURLOPT_DNS_CACHE_TIMEOUT, nameSeconds());
    }
    if (easy == nullptr || m_library.multiAddHandle(m_multi, easy) != CURLM_OK) {
        transfer->fail("no memory is left");
        transfer.reset();
        m_library.easyCleanup(easy);
        return;
    }
    m_doubtful += transfer->isDoubtful() ? 1 : 0;
    if (transfer->request().takesTurns) {
        m_busy.insert(originOf(transfer->request().url));
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
        m_doubtful -= transfer->second->isDoubtful() ? 1 : 0;
        m_slow -= transfer->second->isSlow() ? 1 : 0;
        endTurn(transfer->second->request());
        m_transfers.erase(transfer);
        m_unused.push_back(easy);
    }
}

void CurlFetcher::run() {
    for (std::vector<Question> questions; takeQuestions(questions);) {
        sort(std::move(questions));
        beginWaiting();
        int running = 0;
        m_library.multiPerform(m_multi, &running);
        finishEnded();
        const milliseconds untilRoom = giveUpPlaces();
        const bool canBegin =
            (hasRoom() && !m_waiting.empty()) || (hasRoomForDoubtful() && !m_waitingDoubtful.empty());
        const milliseconds wait = canBegin ? milliseconds(0) : untilRoom;
        m_library.multiPoll(m_multi, nullptr, 0, static_cast<int>(wait.count()), nullptr);
    }
}

std::unique_ptr<Fetcher> openFetcher(std::string& problem) {
    CurlLibrary library;
    return library.open(problem) ? std::make_unique<CurlFetcher>(library) : nullptr;
}

} // namespace vantor::platform::remote
