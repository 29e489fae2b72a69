// SPDX-License-Identifier: MIT
#include "hosts/qt/SessionBus.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/Environment.hpp"

#include <dbus/dbus.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace vantor::hosts::qt {

using platform::posix::Descriptor;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::string_view noBus = "disabled:"; // no kind of address that the libraries know
constexpr milliseconds patience{500};
constexpr milliseconds betweenKnocks{5};
constexpr std::size_t longestAnswer = 65'536; // bytes

struct Release {
    void operator()(DBusMessage* message) const { ::dbus_message_unref(message); }
};
using Message = std::unique_ptr<DBusMessage, Release>;

/// Where a bus listens: a socket with a name on this machine.
struct Place {
    sockaddr_un address{};
    socklen_t length = 0;
};

/// Absent for what is no name of a socket, or too long a one.
std::optional<Place> placeOf(DBusAddressEntry* entry) {
    const char* const path = ::dbus_address_entry_get_value(entry, "path");
    const char* const hidden = ::dbus_address_entry_get_value(entry, "abstract");
    std::string name;
    if (path != nullptr) {
        name = path + std::string(1, '\0');
    } else if (hidden != nullptr) {
        name = std::string(1, '\0') + hidden;
    }
    Place place;
    place.address.sun_family = AF_UNIX;
    if (name.empty() || name.size() > sizeof place.address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(static_cast<void*>(place.address.sun_path), name.data(), name.size());
    place.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    return place;
}

/// The sockets that an address names; none where one of its kinds would start a program (autolaunch,
/// unixexec) or go over the network (tcp).
std::vector<Place> placesOf(const std::string& address) {
    DBusAddressEntry** entries = nullptr;
    int count = 0;
    if (::dbus_parse_address(address.c_str(), &entries, &count, nullptr) == 0) {
        return {};
    }
    std::vector<Place> places;
    const bool here = std::all_of(entries, entries + count, [&places](DBusAddressEntry* entry) {
        if (const std::optional<Place> place = placeOf(entry)) {
            places.push_back(*place);
        }
        return ::dbus_address_entry_get_method(entry) == std::string_view("unix");
    });
    ::dbus_address_entries_free(entries);
    return here ? places : std::vector<Place>();
}

/// A caller of a bus that waits for nothing beyond its end, whatever the other side does: the libraries wait
/// in connect(2) for one that takes nobody in, and in parts of the greeting.
class Caller {
public:
    explicit Caller(steady_clock::time_point end) : m_end(end) {}

    /// False where nobody is there, or the queue at the door stays full.
    bool connect(const Place& place) {
        m_socket = Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        while (::connect(m_socket.number(), reinterpret_cast<const sockaddr*>(&place.address),
                         place.length) != 0) {
            if ((errno != EAGAIN && errno != EINTR) || left() == milliseconds(0)) {
                return false;
            }
            ::poll(nullptr, 0, static_cast<int>(std::min(left(), betweenKnocks).count()));
        }
        return true;
    }

    /// The greeting of the D-Bus protocol: this user by number, which the socket proves.
    bool authenticate() {
        std::string question(1, '\0');
        question += "AUTH EXTERNAL ";
        for (const char digit : std::to_string(::getuid())) {
            question += {'3', digit}; // a digit's code in hexadecimal
        }
        return send(question + "\r\n") &&
               receive([this] { return m_received.find("\r\n") != std::string::npos; }) &&
               m_received.starts_with("OK ");
    }

    /// The first call of every connection, which gives it its name.
    bool sayHello() {
        const Message hello(
            ::dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello"));
        char* bytes = nullptr;
        int length = 0;
        if (!hello) {
            return false;
        }
        ::dbus_message_set_serial(hello.get(), 1);
        if (::dbus_message_marshal(hello.get(), &bytes, &length) == 0) {
            return false;
        }
        const std::string call = "BEGIN\r\n" + std::string(bytes, static_cast<std::size_t>(length));
        ::dbus_free(bytes);
        m_received.clear();
        int whole = 0;
        if (!send(call) || !receive([this, &whole] {
                whole = ::dbus_message_demarshal_bytes_needed(m_received.data(), received());
                return whole < 0 || (whole > 0 && whole <= received());
            }) ||
            whole < 0) {
            return false;
        }
        const Message reply(::dbus_message_demarshal(m_received.data(), whole, nullptr));
        return reply && ::dbus_message_get_type(reply.get()) == DBUS_MESSAGE_TYPE_METHOD_RETURN;
    }

private:
    [[nodiscard]] milliseconds left() const {
        return std::max(std::chrono::ceil<milliseconds>(m_end - steady_clock::now()), milliseconds(0));
    }
    [[nodiscard]] int received() const { return static_cast<int>(m_received.size()); }

    /// What is sent fits into the socket of a bus that has just taken a caller in.
    bool send(const std::string& bytes) const {
        return ::send(m_socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }

    /// Reads on until that is enough; false where the other side ends, says too much or nothing more.
    bool receive(const std::function<bool()>& isEnough) {
        while (!isEnough()) {
            struct pollfd ready {};
            ready.fd = m_socket.number();
            ready.events = POLLIN;
            std::array<char, 512> buffer{};
            if (left() == milliseconds(0) || m_received.size() > longestAnswer) {
                return false;
            }
            ::poll(&ready, 1, static_cast<int>(left().count()));
            const ssize_t count = ::recv(m_socket.number(), buffer.data(), buffer.size(), 0);
            if (count > 0) {
                m_received.append(buffer.data(), static_cast<std::size_t>(count));
            } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
                return false;
            }
        }
        return true;
    }

    const steady_clock::time_point m_end;
    Descriptor m_socket;
    std::string m_received;
};

} // namespace

bool answersAsBus(const std::string& address, milliseconds longest) {
    Caller caller(steady_clock::now() + longest);
    const std::vector<Place> places = placesOf(address);
    return std::ranges::any_of(places, [&caller](const Place& place) { return caller.connect(place); }) &&
           caller.authenticate() && caller.sayHello();
}

void settleSessionBus() {
    using platform::posix::environmentText;
    std::string address = environmentText(addressVariable);
    if (address.empty()) { // where the libraries look as well, before they start one
        address = "unix:path=" + environmentText("XDG_RUNTIME_DIR") + "/bus";
    }
    qputenv(addressVariable,
            QByteArray::fromStdString(answersAsBus(address, patience) ? address : std::string(noBus)));
}

void refuseSessionBus() {
    qputenv(addressVariable, QByteArray(noBus.data(), noBus.size()));
}

} // namespace vantor::hosts::qt
