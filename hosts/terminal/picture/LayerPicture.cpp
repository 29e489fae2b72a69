// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/LayerPicture.hpp"

#include "hosts/terminal/picture/DotCanvas.hpp"
#include "hosts/terminal/picture/LargeText.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::hosts::terminal {

namespace {

using platform::StrokeLayer;
using platform::TextLayer;

constexpr double hairline = 0.05; // of the region: a thinner stroke is a hairline

/// The percentage in the middle; a caption is smaller.
bool isFigure(const TextLayer& text) {
    constexpr double figureSize = 17; // points
    return text.fontSize >= figureSize;
}

class Painter {
public:
    Painter(Grid& grid, const LayerPlace& place, const Look& look)
        : m_grid(grid),
          m_place(place),
          m_look(look),
          m_scale(place.rows / place.region.size.height),
          m_lines(cells(), DotCanvas::Kind::lines, look.glyphs),
          m_strokes(cells(), DotCanvas::Kind::strokes, look.glyphs) {}

    void stroke(const StrokeLayer& layer) {
        const double quarters = m_scale * DotCanvas::down; // a point
        const bool isLine = layer.lineWidth < hairline * m_place.region.size.width;
        const Ink ink =
            inkOf(layer.color, layer.opacity, m_look, isLine ? Contrast::hairline : Contrast::stroke);
        for (platform::ArcSegment arc : layer.path.arcs) {
            arc.center = placed(arc.center);
            arc.radius *= quarters;
            (isLine ? m_lines : m_strokes).stroke(arc, layer.lineWidth * quarters, ink);
        }
    }

    void setDots() const {
        m_lines.set(m_grid, m_place.column, m_place.row);
        m_strokes.set(m_grid, m_place.column, m_place.row);
    }

    void text(const TextLayer& layer) const {
        const Ink ink = inkOf(layer.color, 1, m_look, Contrast::text);
        if (!isFigure(layer) || !largeFigure(layer, ink)) {
            line(layer, ink);
        }
    }

private:
    [[nodiscard]] Size cells() const {
        return {static_cast<int>(std::ceil(m_place.rows * 2)), static_cast<int>(std::ceil(m_place.rows))};
    }
    [[nodiscard]] platform::CGPoint placed(platform::CGPoint point) const {
        return {(point.x - m_place.region.origin.x) * m_scale * DotCanvas::down,
                (point.y - m_place.region.origin.y) * m_scale * DotCanvas::down};
    }

    /// Where there is room for it between the ring's inner edges.
    [[nodiscard]] bool largeFigure(const TextLayer& layer, const Ink& ink) const {
        const double radius = m_place.room * m_scale * DotCanvas::down;
        const platform::CGPoint center =
            placed({platform::CGRectGetMidX(layer.frame), platform::CGRectGetMidY(layer.frame)});
        const LargeText text(layer.text, center, radius, m_look.glyphs);
        if (text.isDrawable()) {
            const Glyphs blocks = m_look.glyphs == Glyphs::ascii ? Glyphs::ascii : Glyphs::block;
            DotCanvas canvas(cells(), DotCanvas::Kind::strokes, blocks);
            text.draw(canvas, ink);
            canvas.set(m_grid, m_place.column, m_place.row);
        }
        return text.isDrawable();
    }

    void line(const TextLayer& layer, Ink ink) const {
        const std::u32string text =
            clippedTo(harmlessCharacters(layer.text), m_place.textWidth, m_look.ellipsis());
        int width = 0;
        for (const char32_t character : text) {
            width += columnsOf(character);
        }
        const double middle = platform::CGRectGetMidY(layer.frame) - m_place.region.origin.y;
        int row = m_place.row + static_cast<int>(middle * m_scale);
        if (middle > m_place.region.size.height * 0.75) {
            row = std::max(row, m_place.lowestRow);
        }
        const int center = static_cast<int>(std::lround(m_place.rows * 2));
        ink.isBold = isFigure(layer);
        m_grid.write(m_place.column + (center - width + (center - width > 0 ? 1 : 0)) / 2, row, text, ink);
    }

    Grid& m_grid;
    const LayerPlace& m_place;
    const Look& m_look;
    double m_scale; // cells a point, downward
    DotCanvas m_lines;
    DotCanvas m_strokes;
};

} // namespace

platform::Layers withoutLevel(platform::Layers layers, std::string_view noFigure) {
    bool isTrack = true; // the first stroke; the level's comes on top of it
    std::erase_if(layers, [&](const platform::Layer& layer) {
        return std::holds_alternative<StrokeLayer>(layer) && !std::exchange(isTrack, false);
    });
    for (platform::Layer& layer : layers) {
        if (auto* const text = std::get_if<TextLayer>(&layer); text != nullptr && isFigure(*text)) {
            text->text = noFigure;
        }
    }
    return layers;
}

void drawLayers(Grid& grid, const platform::Layers& layers, const LayerPlace& place, const Look& look) {
    Painter painter(grid, place, look);
    for (const platform::Layer& layer : layers) {
        if (const auto* stroke = std::get_if<StrokeLayer>(&layer)) {
            painter.stroke(*stroke);
        }
    }
    painter.setDots(); // texts replace whole cells, so they come after all dots
    for (const platform::Layer& layer : layers) {
        if (const auto* text = std::get_if<TextLayer>(&layer)) {
            painter.text(*text);
        }
    }
}

} // namespace vantor::hosts::terminal
