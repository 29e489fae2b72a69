// SPDX-License-Identifier: MIT
#include "hosts/qt/SessionBus.hpp"

#include "Eventually.hpp"
#include "TestTree.hpp"
#include "hosts/common/ChildProcess.hpp"
#include "platform/posix/Descriptor.hpp"
#include "platform/posix/Environment.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <optional>
#include <thread>

namespace vantor::hosts::qt {
namespace {

using platform::posix::Descriptor;
using std::chrono::milliseconds;

constexpr milliseconds brief{150};
constexpr milliseconds ample{10'000};

/// A socket that takes a caller in and says what the test wants, and no more, or takes nobody in.
class Pretender {
public:
    Pretender()
        : m_path((m_tree.root() / "bus").string()),
          m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(static_cast<void*>(address.sun_path), m_path.data(), m_path.size());
        EXPECT_EQ(::bind(m_socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::listen(m_socket.number(), 0); // one may wait
    }
    explicit Pretender(std::string says) : Pretender() {
        m_thread = std::thread([this, says = std::move(says)] {
            m_caller = Descriptor(::accept(m_socket.number(), nullptr, nullptr));
            (void)::send(m_caller.number(), says.data(), says.size(), MSG_NOSIGNAL);
        });
    }
    ~Pretender() {
        ::shutdown(m_socket.number(), SHUT_RDWR);
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }
    Pretender(const Pretender&) = delete;
    Pretender& operator=(const Pretender&) = delete;

    [[nodiscard]] std::string address() const { return "unix:path=" + m_path; }

private:
    tests::TestTree m_tree;
    std::string m_path;
    Descriptor m_socket;
    Descriptor m_caller;
    std::thread m_thread;
};

TEST(SessionBus, OneThatSaysNothingIsNone) {
    for (const char* says : {"", "OK 1234", "OK 1234deadbeef\r\n", "no bus at all\r\n\r\n\r\n",
                             "OK 1234deadbeef\r\nl and no message that anybody could read"}) {
        const Pretender bus(says);
        EXPECT_FALSE(answersAsBus(bus.address(), brief)) << says;
    }
    const Pretender busy;
    EXPECT_FALSE(answersAsBus(busy.address(), brief)) << "it stands in the queue";
    EXPECT_FALSE(answersAsBus(busy.address(), brief)) << "the queue is full";
    // Those of the first kind would start a program.
    for (const char* address : {"autolaunch:", "unixexec:path=/bin/false", "tcp:host=localhost,port=1",
                                "unix:path=/nowhere/bus", "disabled:", "", "nonsense"}) {
        EXPECT_FALSE(answersAsBus(address, ample)) << address;
    }
}

TEST(SessionBus, ARealOneIsFoundAndAMissingOneIsSwitchedOff) {
    const tests::TestTree folder;
    const std::string address = "unix:path=" + (folder.root() / "bus").string();
    // Not by the toolkit's way to start programs, which the thread sanitizer does not survive.
    const std::optional<common::ChildProcess> daemon =
        common::ChildProcess::start("/usr/bin/dbus-daemon", {"--session", "--nofork", "--address=" + address},
                                    platform::posix::wholeEnvironment());
    if (!daemon) {
        GTEST_SKIP() << "dbus-daemon is not installed";
    }
    EXPECT_TRUE(tests::eventually([&address] { return answersAsBus(address, ample); }));
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.root().string()));
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    settleSessionBus();
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString(), address); // where nobody starts another
    ::kill(daemon->number(), SIGTERM);
    daemon->waitForEnd();
    settleSessionBus();
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

} // namespace
} // namespace vantor::hosts::qt
