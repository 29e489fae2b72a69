// SPDX-License-Identifier: MIT
#include "hosts/wall/WallHead.hpp"

#include "fleet/FleetWords.hpp"
#include "hosts/wall/WallWords.hpp"

#include <QAccessible>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <iterator>
#include <utility>

namespace vantor::hosts::wall {

using fleet::Band;

namespace {

constexpr int signSide = 16, signGap = 7; // points

} // namespace

WallHead::WallHead(QString name) : m_name(std::move(name)) {}

void WallHead::setLook(const WallLook& look) {
    m_painter.setLook(look, devicePixelRatioF());
    setFixedHeight(look.pixels(Grid::header));
    update();
}

void WallHead::tell(const fleet::FleetTable& table, std::chrono::nanoseconds now) {
    const fleet::FleetCounts& counts = table.counts();
    std::vector<Piece> pieces{{m_name, TextSize::title, true, false, std::nullopt, 0, 0}};
    if (counts.machines > 0) {
        pieces.push_back({QString::fromStdString(fleet::answeringText(counts)), TextSize::body, false, true,
                          std::nullopt, 12, 3});
    }
    int gap = 32;
    for (const Band band : {Band::down, Band::red, Band::orange, Band::stale, Band::unknown}) {
        if (const std::size_t count = counts.of(band); count > 0) {
            pieces.push_back({QString::fromStdString(fleet::bandCountText(band, count)), TextSize::body,
                              false, false, band, gap,
                              band >= Band::stale    ? 6
                              : band == Band::orange ? 2
                                                     : 1});
            gap = 26;
        }
    }
    if (table.worst()) {
        pieces.push_back(
            {QString::fromStdString(fleet::worstWord()), TextSize::body, false, true, std::nullopt, 32, 7});
        pieces.push_back({QString::fromStdString(fleet::machineText(*table.worst())), TextSize::body, true,
                          false, std::nullopt, 8, 4});
    }
    QString moment;
    bool hasProblem = false;
    if (table.snapshot() != nullptr) {
        const std::vector<std::string> problems = fleet::sourceProblems(*table.snapshot());
        hasProblem = !problems.empty();
        moment = hasProblem ? QString::fromStdString(problems.front())
                            : QString::fromStdString(fleet::averageText(*table.snapshot(), now));
        QString all;
        for (const std::string& problem : problems) {
            all += (all.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromStdString(problem);
        }
        setToolTip(all.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")));
    }
    m_hasProblem = hasProblem;
    const bool isOther = std::exchange(m_pieces, std::move(pieces)) != m_pieces;
    if (std::exchange(m_moment, moment) != moment || isOther) {
        setAccessibleName(text());
        update();
    }
}

QString WallHead::text() const {
    QString all;
    for (const Piece& piece : m_pieces) {
        all += (all.isEmpty() ? QString() : QStringLiteral(" ")) + piece.text;
    }
    return m_moment.isEmpty() ? all : all + QStringLiteral(" \u00B7 ") + m_moment;
}

int WallHead::width(const Piece& piece) const {
    const WallLook& look = m_painter.look();
    const QFont font = look.theme.font(piece.points, piece.isBold ? QFont::Bold : QFont::Normal);
    return look.pixels(piece.gap) + (piece.sign ? look.pixels(signSide + signGap) : 0) +
           QFontMetrics(font).horizontalAdvance(piece.text) + 2;
}

/// The pieces that fit: closer together first, then without the least of them.
std::vector<WallHead::Piece> WallHead::fitting(int room) const {
    std::vector<Piece> pieces = m_pieces;
    const auto isTooWide = [&] {
        int sum = 0;
        for (const Piece& piece : pieces) {
            sum += width(piece);
        }
        return sum > room;
    };
    if (isTooWide()) {
        for (Piece& piece : pieces) {
            piece.gap = piece.gap * 5 / 8;
        }
    }
    while (pieces.size() > 1 && isTooWide()) {
        const auto least = std::ranges::max_element(pieces, {}, &Piece::rank);
        if (const auto next = std::next(least); next != pieces.end()) {
            next->gap = std::max(next->gap, least->gap); // as far from what is then before it
        }
        pieces.erase(least);
    }
    return pieces;
}

void WallHead::paintPiece(QPainter& painter, const Piece& piece, int start, int room) {
    const WallLook& look = m_painter.look();
    start += look.pixels(piece.gap);
    if (piece.sign) {
        const int side = look.pixels(signSide);
        const QRect place = fromStart(rect(), start, side);
        painter.drawPixmap(place.left(), (height() - side) / 2, m_painter.square(*piece.sign, side));
        start += side + look.pixels(signGap);
    }
    painter.setPen(piece.isSecondary ? look.theme.secondaryText : look.theme.text);
    m_painter.texts().draw(painter, fromStart(rect(), start, std::max(room, 0)), piece.text,
                           look.theme.font(piece.points, piece.isBold ? QFont::Bold : QFont::Normal));
}

void WallHead::paintEvent(QPaintEvent* /*event*/) {
    const WallLook& look = m_painter.look();
    QPainter painter(this);
    painter.fillRect(rect(), look.theme.backdrop);
    painter.fillRect(0, height() - 1, QWidget::width(), 1, look.theme.separator);
    const int margin = look.pixels(Grid::margin);
    const QFont small = look.theme.font(TextSize::label);
    const int whole = QWidget::width() - 2 * margin;
    const int moment = std::min(QFontMetrics(small).horizontalAdvance(m_moment) + 2, whole / 3);
    const int room = whole - (m_moment.isEmpty() ? 0 : moment + look.pixels(24));
    const std::vector<Piece> pieces = fitting(room);
    int start = margin;
    for (const Piece& piece : pieces) {
        paintPiece(painter, piece, start, std::min(width(piece), margin + room - start));
        start += width(piece);
    }
    painter.setPen(m_hasProblem ? look.destructive : look.theme.secondaryText);
    m_painter.texts().draw(painter, fromStart(rect(), margin + whole - moment, moment), m_moment, small,
                           Qt::AlignTrailing);
}

} // namespace vantor::hosts::wall
