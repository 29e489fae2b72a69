// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vantor::hosts::qt {

/// One window of a program per user and display: a second start makes the first one come forward. They meet
/// at a socket without a file, so that nothing is left behind by a crash; only processes of the same user are
/// listened to.
class SingleInstance {
public:
    /// `program` is the name that tells this program's socket from others'.
    explicit SingleInstance(std::string_view program);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True when another one runs, which then has been asked to come forward.
    [[nodiscard]] bool isSecond() const { return m_second; }
    void setRaiseHandler(std::function<void()> handler) { m_raise = std::move(handler); }

private:
    void listen();
    void accept();

    int m_socket = -1;
    bool m_second = false;
    std::function<void()> m_raise;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace vantor::hosts::qt
