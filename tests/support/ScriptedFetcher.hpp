// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Fetcher.hpp"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace vantor::tests {

/// A network whose answers the test gives, when it says so.
class ScriptedFetcher final : public platform::remote::Fetcher {
public:
    void fetch(platform::remote::FetchRequest request, Done done) override {
        urls.push_back(request.url);
        forms.push_back(request.form);
        m_waiting.push_back(std::move(done));
    }
    [[nodiscard]] bool isAsked() const { return !m_waiting.empty(); }
    [[nodiscard]] std::size_t waiting() const { return m_waiting.size(); }

    /// Answers the oldest question.
    void answer(platform::remote::FetchAnswer answer) {
        const Done done = std::move(m_waiting.front());
        m_waiting.pop_front();
        done(std::move(answer));
    }
    void answer(const std::string& body, std::chrono::nanoseconds taken) {
        platform::remote::FetchAnswer whole;
        whole.status = 200;
        whole.contentType = "text/plain; version=0.0.4";
        whole.body = body;
        whole.taken = taken;
        answer(std::move(whole));
    }
    void fail(const std::string& problem) {
        platform::remote::FetchAnswer failed;
        failed.problem = problem;
        answer(std::move(failed));
    }

    std::vector<std::string> urls;  ///< all that was asked
    std::vector<std::string> forms; ///< with it

private:
    std::deque<Done> m_waiting;
};

} // namespace vantor::tests
