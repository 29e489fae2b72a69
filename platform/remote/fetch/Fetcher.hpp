// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Access.hpp"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace vantor::platform::remote {

/// What is asked of another machine, and what may be spent on it.
struct FetchRequest {
    std::string url;
    std::string form = {};   ///< the body of a POST, already encoded; empty: a GET
    bool takesTurns = false; ///< waits for those to the same origin that do so too: one at a time to a server
    std::string accept = {}; ///< the header; empty: anything
    std::shared_ptr<const Access> access = {};    ///< null: whoever asks is nobody
    std::size_t mostBytes = std::size_t{8} << 20; ///< of the body, unpacked
    std::chrono::milliseconds patience{5000};     ///< for the exchange, from the moment it begins
    bool isDoubtful = false;   ///< nothing came the last time: it is not to keep others waiting
    bool isLastForNow = false; ///< no other question to the server is near: its connection need not be kept
};

/// Open at a time, between questions as well. Of more servers that are asked in turn none finds its own
/// again.
inline constexpr std::size_t mostConnections = 32;

/// The problems where nobody listens, and where nobody knows the name.
inline constexpr const char* refusal = "connection refused";
inline constexpr const char* unknownName = "the name cannot be resolved";

/// What came of it.
struct FetchAnswer {
    int status = 0;          ///< HTTP's; 0 where the exchange was not whole
    std::string contentType; ///< as the server says, unchecked; empty where it does not
    std::string body;
    std::string problem; ///< why there is no whole answer, in English and printable; empty where there is one
    std::chrono::nanoseconds taken{}; ///< when the answer was whole, on the steady clock
};

/// Asks other machines. No call waits for the network.
class Fetcher {
public:
    /// Runs once for each request, on the fetcher's own thread: it may take its time over the answer (to
    /// parse it), but must not wait. Requests that are under way when the fetcher goes are dropped.
    using Done = std::function<void(FetchAnswer)>;

    Fetcher() = default;
    virtual ~Fetcher() = default;
    Fetcher(const Fetcher&) = delete;
    Fetcher& operator=(const Fetcher&) = delete;

    /// Any thread.
    virtual void fetch(FetchRequest request, Done done) = 0;
};

/// A fetcher on libcurl, which is opened here and nowhere before: a run that names no other machine loads
/// and connects to nothing. Null, with the reason in English in `problem`, where there is no libcurl.
[[nodiscard]] std::unique_ptr<Fetcher> openFetcher(std::string& problem);

} // namespace vantor::platform::remote
