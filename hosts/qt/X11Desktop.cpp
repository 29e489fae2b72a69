// SPDX-License-Identifier: MIT
#include "hosts/qt/X11Desktop.hpp"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QMarginsF>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace vantor::hosts::qt {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); } // NOLINT: the library's way
};
template<class Reply>
using Owned = std::unique_ptr<Reply, Free>;

xcb_connection_t* server() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const Owned<xcb_intern_atom_reply_t> reply(::xcb_intern_atom_reply(
        connection, ::xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<xcb_atom_t> atomsOf(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property) {
    const Owned<xcb_get_property_reply_t> reply(::xcb_get_property_reply(
        connection, ::xcb_get_property(connection, 0, window, property, XCB_ATOM_ATOM, 0, 1024), nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* const first = static_cast<const xcb_atom_t*>(::xcb_get_property_value(reply.get()));
    return {first,
            first + ::xcb_get_property_value_length(reply.get()) / static_cast<int>(sizeof(xcb_atom_t))};
}

void setAtoms(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
              const std::vector<xcb_atom_t>& atoms) {
    ::xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                          static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

bool isOwned(xcb_connection_t* connection, std::string_view selection) {
    const Owned<xcb_get_selection_owner_reply_t> owner(::xcb_get_selection_owner_reply(
        connection, ::xcb_get_selection_owner(connection, atom(connection, selection)), nullptr));
    return owner && owner->owner != XCB_NONE;
}

} // namespace

void setPartOfX11Desktop(const QWindow& window, bool is) {
    xcb_connection_t* const connection = server();
    if (connection == nullptr || window.handle() == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t state = atom(connection, "_NET_WM_STATE");
    std::vector<xcb_atom_t> states = atomsOf(connection, id, state);
    for (const std::string_view name :
         {"_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}) {
        const xcb_atom_t wanted = atom(connection, name);
        std::erase(states, wanted);
        if (is) {
            states.push_back(wanted);
        }
    }
    setAtoms(connection, id, state, states);
    // Some window managers read "on every workspace" from the one state, some from the other.
    constexpr std::uint32_t everyWorkspace = 0xFFFFFFFF;
    const xcb_atom_t workspace = atom(connection, "_NET_WM_DESKTOP");
    if (is) {
        ::xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, workspace, XCB_ATOM_CARDINAL, 32, 1,
                              &everyWorkspace);
    } else {
        ::xcb_delete_property(connection, id, workspace);
    }
    setAtoms(connection, id, atom(connection, "_NET_WM_WINDOW_TYPE"),
             {atom(connection, is ? "_NET_WM_WINDOW_TYPE_DESKTOP" : "_NET_WM_WINDOW_TYPE_NORMAL")});
}

void tellX11Margins(const QWindow& window, const QMargins& margins) {
    xcb_connection_t* const connection = server();
    if (connection == nullptr || window.handle() == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    const xcb_atom_t property = atom(connection, "_GTK_FRAME_EXTENTS");
    if (margins.isNull()) { // zeros would still say that the window draws a frame of its own
        ::xcb_delete_property(connection, id, property);
        return;
    }
    const QMarginsF device = QMarginsF(margins) * window.devicePixelRatio();
    const std::array extents{device.left(), device.right(), device.top(), device.bottom()};
    std::array<std::uint32_t, extents.size()> pixels{};
    std::ranges::transform(extents, pixels.begin(),
                           [](double extent) { return static_cast<std::uint32_t>(std::lround(extent)); });
    ::xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, property, XCB_ATOM_CARDINAL, 32,
                          pixels.size(), pixels.data());
}

bool hasX11Tray() {
    xcb_connection_t* const connection = server();
    return connection != nullptr && isOwned(connection, "_NET_SYSTEM_TRAY_S0");
}

bool isComposed() {
    xcb_connection_t* const connection = server();
    return connection == nullptr || isOwned(connection, "_NET_WM_CM_S0");
}

} // namespace vantor::hosts::qt
