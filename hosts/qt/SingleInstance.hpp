// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace vantor::hosts::qt {

/// One widget per user and display: a second start makes the first one come forward. They meet at a socket
/// without a file, so that nothing is left behind by a crash; only processes of the same user are listened
/// to.
class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True when another one runs; it has been asked to come forward.
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
