// SPDX-License-Identifier: MIT
#include "platform/remote/sources/AnswerInbox.hpp"

#include <utility>

namespace vantor::platform::remote {

void AnswerInbox::expect() {
    const std::lock_guard lock(m_mutex);
    ++m_underWay;
}

bool AnswerInbox::put(Answer answer) {
    const std::lock_guard lock(m_mutex);
    m_answers.push_back(std::move(answer));
    --m_underWay;
    return m_answers.size() == 1 || m_underWay == 0;
}

std::vector<AnswerInbox::Answer> AnswerInbox::take() {
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_answers, {});
}

bool AnswerInbox::isComplete() const {
    const std::lock_guard lock(m_mutex);
    return m_underWay == 0;
}

} // namespace vantor::platform::remote
