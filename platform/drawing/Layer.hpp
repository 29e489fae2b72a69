// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/CGGeometry.hpp"
#include "platform/drawing/UIColor.hpp"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// What a picture is made of. A host draws these two kinds, back to front, and nothing else.
namespace vantor::platform {

/// An angle in radians, from the positive x axis; growing angles turn clockwise on screen since y points
/// down.
struct Angle {
    double radians = 0;
    bool operator==(const Angle&) const = default;
};

/// One circular arc. It runs toward growing angles unless it is `clockwise`.
struct ArcSegment {
    CGPoint center;
    double radius = 0;
    Angle startAngle;
    Angle endAngle;
    bool clockwise = false;
    bool operator==(const ArcSegment&) const = default;

    /// The angle swept from start to end, in radians: 0...2π toward growing angles, negative when
    /// `clockwise`.
    [[nodiscard]] double sweep() const;
};

/// A path of arcs. An empty one draws nothing, not even the dot of a round cap.
struct Path {
    std::vector<ArcSegment> arcs;
    bool operator==(const Path&) const = default;

    /// Adds one arc (`addArc(center:radius:startAngle:endAngle:clockwise:transform:)`, identity transform).
    void addArc(CGPoint center, double radius, Angle startAngle, Angle endAngle, bool clockwise);
    /// The part between two fractions of its length, both pinned to 0...1 (not-a-number counts as 0); empty
    /// when the end is not after the start.
    [[nodiscard]] Path trimmed(double from, double to) const;
};

enum class LineCap : std::uint8_t { butt, round, square };
enum class LineJoin : std::uint8_t { miter, round, bevel };

/// The stroke along a path: half of its width lies on each side. It has no dashes.
struct StrokeLayer {
    Path path;
    double lineWidth = 1; ///< points
    LineCap lineCap = LineCap::butt;
    LineJoin lineJoin = LineJoin::miter;
    double miterLimit = 10;
    UIColor color = UIColor::labelColor();
    double opacity = 1; ///< 0...1, on top of the colour's own
    bool operator==(const StrokeLayer&) const = default;
};

/// A stroke with round ends and joins, `lineWidth` points wide.
[[nodiscard]] StrokeLayer roundStroke(Path path, double lineWidth, const UIColor& color);

/// One line of text, centred in `frame`. A text that is wider than the frame shrinks, to `minimumScaleFactor`
/// of its size at the least; one that does not fit even then is cut and ends in an ellipsis.
struct TextLayer {
    std::string text;     ///< UTF-8
    double fontSize = 17; ///< points; the platform's default text size
    CGRect frame;
    double minimumScaleFactor = 1; ///< 0...1
    UIColor color = UIColor::labelColor();
    bool operator==(const TextLayer&) const = default;
};

using Layer = std::variant<StrokeLayer, TextLayer>;
using Layers = std::vector<Layer>;

} // namespace vantor::platform
