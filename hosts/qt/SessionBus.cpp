// SPDX-License-Identifier: MIT
#include "hosts/qt/SessionBus.hpp"

#include "platform/posix/Environment.hpp"

#include <dbus/dbus.h>

#include <QByteArray>
#include <algorithm>
#include <memory>
#include <string_view>

namespace vantor::hosts::qt {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::string_view noBus = "disabled:"; // no kind of address that the libraries know
constexpr milliseconds patience{500};

struct Close {
    void operator()(DBusConnection* connection) const {
        ::dbus_connection_close(connection);
        ::dbus_connection_unref(connection);
    }
    void operator()(DBusMessage* message) const { ::dbus_message_unref(message); }
    void operator()(DBusPendingCall* call) const {
        ::dbus_pending_call_cancel(call);
        ::dbus_pending_call_unref(call);
    }
};

template<class Thing>
using Owned = std::unique_ptr<Thing, Close>;

/// Whether an address, or each of a list, is a socket with a name on this machine. The others start programs
/// (autolaunch, unixexec) or go over the network (tcp).
bool isSocketHere(const std::string& address) {
    DBusAddressEntry** entries = nullptr;
    int count = 0;
    if (::dbus_parse_address(address.c_str(), &entries, &count, nullptr) == 0) {
        return false;
    }
    const bool here = std::all_of(entries, entries + count, [](const DBusAddressEntry* entry) {
        return ::dbus_address_entry_get_method(const_cast<DBusAddressEntry*>(entry)) ==
               std::string_view("unix");
    });
    ::dbus_address_entries_free(entries);
    return here && count > 0;
}

} // namespace

bool answersAsBus(const std::string& address, milliseconds longest) {
    if (!isSocketHere(address)) {
        return false;
    }
    const auto end = steady_clock::now() + longest;
    const Owned<DBusConnection> connection(::dbus_connection_open_private(address.c_str(), nullptr));
    if (!connection) {
        return false;
    }
    ::dbus_connection_set_exit_on_disconnect(connection.get(), 0);
    const Owned<DBusMessage> hello(
        ::dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello"));
    DBusPendingCall* sent = nullptr;
    if (!hello || ::dbus_connection_send_with_reply(connection.get(), hello.get(), &sent, -1) == 0 ||
        sent == nullptr) {
        return false;
    }
    const Owned<DBusPendingCall> call(sent);
    for (auto left = longest; left.count() > 0 && ::dbus_pending_call_get_completed(call.get()) == 0;
         left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now())) {
        if (::dbus_connection_read_write_dispatch(connection.get(), static_cast<int>(left.count())) == 0) {
            break; // it hung up
        }
    }
    const bool completed = ::dbus_pending_call_get_completed(call.get()) != 0;
    const Owned<DBusMessage> reply(completed ? ::dbus_pending_call_steal_reply(call.get()) : nullptr);
    return reply && ::dbus_message_get_type(reply.get()) == DBUS_MESSAGE_TYPE_METHOD_RETURN;
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
