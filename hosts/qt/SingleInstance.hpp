// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/types.h>

#include <QObject>
#include <QSocketNotifier>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::qt {

/// One window of a program per user and display: a second start hands what it was started with to the first
/// one, which comes forward. They meet at a socket without a file, so that nothing is left behind by a crash;
/// only processes of the same user are listened to. Main thread.
class SingleInstance {
public:
    using Words = std::vector<std::string>;
    enum class Role : std::uint8_t {
        first,     ///< listens; also where no socket is to be had, which nobody can call then
        second,    ///< another one runs and has heard the words
        unanswered ///< another one runs and did not answer in time
    };

    /// `program` is the name that tells this program's socket from others', `words` is what a first one is to
    /// hear, with the launcher's token that lets a window come forward (XDG_ACTIVATION_TOKEN). Waits for the
    /// first one's answer, at most for `patience`.
    explicit SingleInstance(std::string_view program, const Words& words = {},
                            std::chrono::milliseconds patience = std::chrono::seconds(5));

    [[nodiscard]] Role role() const { return m_role; }
    /// The process that runs already, where this is not the first.
    [[nodiscard]] pid_t other() const { return m_other; }

    /// `called` hears the words of later starts, in the application's event loop. The token of such a start
    /// is in the environment by then, where the toolkit looks for it.
    void setCallHandler(std::function<void(const Words&)> called) { m_called = std::move(called); }

private:
    void listen();
    void accept();

    platform::posix::Descriptor m_socket;
    Role m_role = Role::first;
    pid_t m_other = 0;
    std::function<void(const Words&)> m_called;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_calls; ///< those that have come and not yet spoken, as children
};

/// Makes room in the environment for what a later start hands over: from then on the list of variables does
/// not move in memory when that is put in, while other threads may read it. Before there are any.
void makeRoomForToken();

} // namespace vantor::hosts::qt
