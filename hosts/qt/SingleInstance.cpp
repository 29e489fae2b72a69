// SPDX-License-Identifier: MIT
#include "hosts/qt/SingleInstance.hpp"

#include "platform/posix/Environment.hpp"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTimer>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <thread>
#include <utility>

namespace vantor::hosts::qt {

using platform::posix::Descriptor;
using platform::posix::environmentText;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr std::size_t longestMessage = 4096; // bytes
constexpr int mostCalls = 16;                // at a time
constexpr milliseconds rest{1000};           // after a call that could not be taken, and for one to be made
constexpr milliseconds betweenAttempts{5};
constexpr char answer = '1';

/// A name in the abstract name space, which begins with a zero byte.
std::string meetingPoint(std::string_view program) {
    std::string name(1, '\0');
    name.append(program).append("/").append(std::to_string(::getuid()));
    for (const char* const display : {"WAYLAND_DISPLAY", "DISPLAY"}) {
        name.append("/").append(environmentText(display));
    }
    return name.substr(0, sizeof(sockaddr_un::sun_path));
}

template<class Call>
bool withAddress(const std::string& name, Call call) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(static_cast<void*>(address.sun_path), name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    return call(reinterpret_cast<const sockaddr*>(&address), length) == 0;
}

/// The process at the other end, where it is this user's.
std::optional<pid_t> ownProcess(const Descriptor& socket) {
    ucred peer{};
    socklen_t length = sizeof peer;
    const bool known = ::getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0;
    return known && peer.uid == ::getuid() ? std::optional(peer.pid) : std::nullopt;
}

Descriptor newSocket(int flags) {
    return Descriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

void limitWaits(const Descriptor& socket, milliseconds longest) {
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(longest);
    const timeval limit{whole.count(), std::chrono::microseconds(longest - whole).count()};
    for (const int wait : {SO_SNDTIMEO, SO_RCVTIMEO}) {
        ::setsockopt(socket.number(), SOL_SOCKET, wait, &limit, sizeof limit);
    }
}

/// The token, then the words, each with a zero byte at its end.
std::string messageOf(const SingleInstance::Words& words) {
    std::string message = environmentText(tokenVariable).substr(0, 1024) + '\0';
    for (const std::string& word : words) {
        message += word + '\0';
    }
    return message.size() <= longestMessage ? message : std::string(1, '\0');
}

SingleInstance::Words wordsOf(std::string_view message) {
    SingleInstance::Words words;
    for (std::size_t end = 0; (end = message.find('\0')) != std::string_view::npos;) {
        words.emplace_back(message.substr(0, end));
        message.remove_prefix(end + 1);
    }
    return words;
}

/// A start that has come and is about to say what it wants.
class Call final : public QObject {
public:
    Call(Descriptor socket, QObject* parent, std::function<void(const SingleInstance::Words&)> heard)
        : QObject(parent),
          m_socket(std::move(socket)),
          m_heard(std::move(heard)),
          m_notifier(m_socket.number(), QSocketNotifier::Read) {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] { hear(); });
        QTimer::singleShot(rest, this, [this] { deleteLater(); });
    }

private:
    void hear() {
        m_notifier.setEnabled(false);
        deleteLater();
        std::array<char, longestMessage> bytes{};
        const ssize_t length = ::recv(m_socket.number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        SingleInstance::Words words =
            wordsOf({bytes.data(), length > 0 ? static_cast<std::size_t>(length) : 0});
        if (words.empty()) {
            return;
        }
        if (!words.front().empty()) {
            qputenv(tokenVariable, QByteArray::fromStdString(words.front()));
        }
        words.erase(words.begin());
        m_heard(words);
        (void)::send(m_socket.number(), &answer, sizeof answer, MSG_DONTWAIT | MSG_NOSIGNAL);
    }

    Descriptor m_socket;
    std::function<void(const SingleInstance::Words&)> m_heard;
    QSocketNotifier m_notifier;
};

/// What became of a call to the one that holds the name.
enum class Outcome : std::uint8_t { answered, silent, gone, foreign };

Outcome callFirst(const std::string& name, const std::string& message, milliseconds patience, pid_t& other) {
    const Descriptor socket = newSocket(0);
    limitWaits(socket, patience);
    if (!withAddress(name, [&socket](const sockaddr* address, socklen_t length) {
            return ::connect(socket.number(), address, length);
        })) {
        // Refused: it ends, or has the name and does not listen yet. EAGAIN: others were quicker for too
        // long.
        return errno == ECONNREFUSED ? Outcome::gone : errno == EAGAIN ? Outcome::silent : Outcome::foreign;
    }
    const std::optional<pid_t> process = ownProcess(socket);
    if (!process) {
        return Outcome::foreign;
    }
    other = *process;
    char said = 0;
    if (::send(socket.number(), message.data(), message.size(), MSG_NOSIGNAL) < 0 ||
        ::recv(socket.number(), &said, sizeof said, 0) <= 0) {
        return errno == EAGAIN ? Outcome::silent : Outcome::gone;
    }
    return Outcome::answered;
}

} // namespace

SingleInstance::SingleInstance(std::string_view program, const Words& words, milliseconds patience) {
    const std::string name = meetingPoint(program);
    const std::string message = messageOf(words);
    const auto end = steady_clock::now() + patience;
    for (auto left = patience; left.count() > 0;
         left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now())) {
        m_socket = newSocket(SOCK_NONBLOCK);
        if (!m_socket.isOpen() || withAddress(name, [this](const sockaddr* address, socklen_t length) {
                return ::bind(m_socket.number(), address, length);
            })) {
            m_role = Role::first;
            listen();
            return;
        }
        m_socket.reset();
        errno = 0;
        switch (callFirst(name, message, left, m_other)) {
        case Outcome::answered:
            m_role = Role::second;
            return;
        case Outcome::foreign: // nobody that could be told: a window of its own
            return;
        case Outcome::silent:
            m_role = Role::unanswered;
            return;
        case Outcome::gone:
            m_role = Role::unanswered; // unless the next attempt tells otherwise
            std::this_thread::sleep_for(betweenAttempts);
        }
    }
}

void SingleInstance::listen() {
    if (m_socket.isOpen() && ::listen(m_socket.number(), SOMAXCONN) == 0) {
        m_notifier = std::make_unique<QSocketNotifier>(m_socket.number(), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { accept(); });
    }
}

void SingleInstance::accept() {
    Descriptor caller;
    if (m_calls.children().size() < mostCalls) {
        caller = Descriptor(::accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    }
    if (caller.isOpen()) {
        if (ownProcess(caller)) {
            new Call(std::move(caller), &m_calls, [this](const Words& words) {
                if (m_called) {
                    m_called(words);
                }
            });
        }
        return;
    }
    // The caller stays at the door, and so the notifier would ask again and again: where there is no
    // descriptor left, or where callers come and say nothing.
    m_notifier->setEnabled(false);
    QTimer::singleShot(rest, m_notifier.get(), [this] { m_notifier->setEnabled(true); });
}

void makeRoomForToken() {
    if (!qEnvironmentVariableIsSet(tokenVariable)) {
        qputenv(tokenVariable, "-");
        qunsetenv(tokenVariable);
    }
}

} // namespace vantor::hosts::qt
