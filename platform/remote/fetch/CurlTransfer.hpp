// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/CurlLibrary.hpp"
#include "platform/remote/fetch/Fetcher.hpp"

#include <chrono>
#include <optional>
#include <string>

namespace vantor::platform::remote {

/// One exchange, of one easy handle. The bounds are kept as bytes come in: libcurl's own limit does not hold
/// for answers that do not tell their length or that unpack to more.
class CurlTransfer {
public:
    /// On a handle as it was made or reset, which stays the caller's; may be null.
    CurlTransfer(const CurlLibrary& library, CURL* easy, FetchRequest request, Fetcher::Done done);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    [[nodiscard]] bool isDoubtful() const { return m_request.isDoubtful; }
    /// When it counts as slow, a fifth of its patience after it began; absent where it has answered or counts
    /// so already.
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> slowFrom() const;
    /// From then on it counts as slow. False where it does not: its name is still being looked up, which
    /// takes a thread of its own.
    [[nodiscard]] bool becomeSlow();
    [[nodiscard]] bool isSlow() const { return m_isSlow; }
    [[nodiscard]] const FetchRequest& request() const { return m_request; }

    /// Takes up how the handle ended. True where it is to be added once more: the server pointed elsewhere on
    /// its own origin. Anything else is told to whoever asked.
    [[nodiscard]] bool ended(CURLcode code);
    void fail(std::string problem);

private:
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static std::size_t takeHeader(char* bytes, std::size_t size, std::size_t count, void* transfer);

    void setUp();
    void setUpAccess(const Access& access);
    [[nodiscard]] std::string problemOf(CURLcode code) const;
    [[nodiscard]] std::string tlsAlert() const;
    [[nodiscard]] std::string endedEarly() const;
    [[nodiscard]] bool redirect();
    [[nodiscard]] int systemError() const;

    const CurlLibrary& m_library;
    FetchRequest m_request;
    Fetcher::Done m_done;
    FetchAnswer m_answer;
    CURL* m_easy;
    std::chrono::steady_clock::time_point m_begun = std::chrono::steady_clock::now();
    curl_slist* m_headers = nullptr;
    char m_details[CURL_ERROR_SIZE] = {}; ///< libcurl's own words about a failure
    std::size_t m_headerBytes = 0;
    bool m_isTooLarge = false;
    bool m_isSlow = false;
    int m_redirects = 0;
};

} // namespace vantor::platform::remote
