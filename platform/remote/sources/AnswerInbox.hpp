// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/NodeQuestion.hpp"
#include "platform/remote/sources/WatchedNode.hpp"

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

namespace vantor::platform::remote {

/// Answers on their way from the fetcher's thread to the main one, which is told of the first and of the last
/// of those that are under way, not of each: a thousand machines must not wake it a thousand times.
class AnswerInbox {
public:
    struct Answer {
        std::shared_ptr<WatchedNode> node;
        NodeTold told;
    };

    /// A question was asked. Any thread, as all of these.
    void expect();
    /// True where the main thread is to be told.
    [[nodiscard]] bool put(Answer answer);
    [[nodiscard]] std::vector<Answer> take();
    /// Whether no question is under way.
    [[nodiscard]] bool isComplete() const;

private:
    mutable std::mutex m_mutex;
    std::vector<Answer> m_answers;
    std::size_t m_underWay = 0;
};

} // namespace vantor::platform::remote
