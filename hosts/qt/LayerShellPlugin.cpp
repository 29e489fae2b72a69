// SPDX-License-Identifier: MIT
// Loaded when a card is to be on a layer under Wayland, so that nobody else pays for the libraries behind it.
#include <wayland-client.h>

#include <LayerShellQt/Window>
#include <QWindow>
#include <string_view>

namespace {

void noteGlobal(void* found, wl_registry* /*registry*/, std::uint32_t /*name*/, const char* interface,
                std::uint32_t /*version*/) {
    if (interface == std::string_view("zwlr_layer_shell_v1")) {
        *static_cast<bool*>(found) = true;
    }
}

void forgetGlobal(void* /*found*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

/// Asked on a connection of its own: the toolkit ends the program over a window that it cannot show.
bool compositorKnowsLayers() {
    wl_display* const display = ::wl_display_connect(nullptr);
    if (display == nullptr) {
        return false;
    }
    bool found = false;
    static constexpr wl_registry_listener listener{noteGlobal, forgetGlobal};
    wl_registry* const registry = ::wl_display_get_registry(display);
    ::wl_registry_add_listener(registry, &listener, &found);
    ::wl_display_roundtrip(display);
    ::wl_registry_destroy(registry);
    ::wl_display_disconnect(display);
    return found;
}

} // namespace

extern "C" __attribute__((visibility("default"))) bool vantorPutOnLayer(QWindow* window, bool above,
                                                                        unsigned edges, int margin) {
    using LayerShellQt::Window;
    static const bool known = compositorKnowsLayers();
    Window* const card = known ? Window::get(window) : nullptr;
    if (card == nullptr) {
        return false;
    }
    card->setLayer(above ? Window::LayerTop : Window::LayerBottom);
    card->setAnchors(static_cast<Window::Anchors>(static_cast<int>(edges)));
    card->setMargins({margin, margin, margin, margin});
    card->setKeyboardInteractivity(Window::KeyboardInteractivityOnDemand);
    card->setScope(QStringLiteral("vantor-widget"));
    return true;
}
