// SPDX-License-Identifier: MIT
#include "hosts/qt/LayerShell.hpp"

#include "hosts/qt/WindowPlace.hpp"

#include <QCoreApplication>
#include <QLibrary>
#include <QPoint>
#include <QSize>
#include <QWindow>
#include <array>
#include <utility>

namespace vantor::hosts::qt {

namespace {

using PutOnLayer = bool (*)(QWindow* window, bool above, unsigned edges, int margin);

/// Installed in a folder of ours, built beside the program. Null where it is in neither.
PutOnLayer loadedFunction() {
    for (const QString& folder :
         {QStringLiteral(VANTOR_PLUGIN_FOLDER), QCoreApplication::applicationDirPath()}) {
        const QString path = folder + QStringLiteral("/vantor-layer-shell.so");
        if (auto* const function =
                reinterpret_cast<PutOnLayer>(QLibrary::resolve(path, "vantorPutOnLayer"))) {
            return function;
        }
    }
    return nullptr;
}

} // namespace

unsigned edgesOf(std::string_view word) {
    unsigned edges = 0;
    for (const auto& [name, edge] : std::array{std::pair(std::string_view("top"), Edge::top),
                                               std::pair(std::string_view("bottom"), Edge::bottom),
                                               std::pair(std::string_view("left"), Edge::left),
                                               std::pair(std::string_view("right"), Edge::right)}) {
        edges |= word.find(name) != std::string_view::npos ? edge : 0;
    }
    return edges;
}

bool putOnLayer(QWindow& window, Layer layer, unsigned edges, int margin) {
    static const PutOnLayer function = isWayland() ? loadedFunction() : nullptr;
    return function != nullptr && function(&window, layer == Layer::aboveWindows, edges, margin);
}

QPoint placeOnLayer(const QSize& window, const QSize& screen, unsigned edges, int margin) {
    const auto along = [&](int size, int room, unsigned first, unsigned last) {
        return (edges & first) != 0 ? margin : (edges & last) != 0 ? room - margin - size : (room - size) / 2;
    };
    return {along(window.width(), screen.width(), Edge::left, Edge::right),
            along(window.height(), screen.height(), Edge::top, Edge::bottom)};
}

} // namespace vantor::hosts::qt
