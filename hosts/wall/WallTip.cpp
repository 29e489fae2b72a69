// SPDX-License-Identifier: MIT
#include "hosts/wall/WallTip.hpp"

#include "hosts/wall/WallPainter.hpp"
#include "hosts/wall/WallWords.hpp"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace vantor::hosts::wall {

using platform::FleetFigure;

namespace {

constexpr double shadow = 8, padding = 16, usualWidth = 264; // points
constexpr double titleHeight = 24, lineHeight = 24, noteHeight = 20, barStart = 88, barWidth = 88;

} // namespace

WallTip::WallTip(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void WallTip::setLook(const WallLook& look) {
    m_look = look;
}

void WallTip::tell(const fleet::FleetTable& table, std::size_t row, std::size_t group,
                   std::chrono::nanoseconds now) {
    const fleet::FleetRow& shown = table.rows().at(row);
    const platform::FleetMachine& machine = *shown.machine;
    const bool isCurrent = shown.band != fleet::Band::down && shown.band != fleet::Band::stale;
    m_name = QString::fromStdString(machine.name);
    m_age = momentText(*table.snapshot(), shown, now);
    m_lines.clear();
    for (const FleetFigure figure : {FleetFigure::memory, FleetFigure::storage, FleetFigure::processor}) {
        const std::optional<double>& share = machine.figure(figure);
        m_lines.push_back({figureName(figure),
                           figure == FleetFigure::storage ? isolated(machine.volume) : QString(),
                           figureText(figure, share), share,
                           !share      ? fleet::Band::unknown
                           : isCurrent ? fleet::shareBand(*share)
                                       : fleet::Band::stale});
    }
    for (const FleetFigure figure : {FleetFigure::received, FleetFigure::sent}) {
        m_lines.push_back({figureWord(figure), {}, figureText(figure, machine.figure(figure)), std::nullopt});
    }
    m_notes.clear();
    if (shown.band == fleet::Band::down) {
        m_notes.push_back(stateText(shown));
    }
    if (machine.labels != nullptr && !machine.labels->empty()) {
        QString labels;
        for (const auto& [name, value] : *machine.labels) {
            std::string label = name;
            label += '=';
            label += value;
            labels += (labels.isEmpty() ? QString() : QStringLiteral(" \u00B7 ")) + isolated(label);
        }
        m_notes.push_back(labels);
    }
    const fleet::FleetGroup& of = table.groups().at(group);
    m_notes.push_back(hintText(of, of.worst && of.worst->machine == shown.machine));
    fit();
    update();
}

QString WallTip::text() const {
    QString text = m_name + QLatin1Char('\n') + m_age;
    for (const Line& line : m_lines) {
        text += QLatin1Char('\n') + line.name + QLatin1Char(' ') + line.place + QLatin1Char(' ') + line.value;
    }
    for (const QString& note : m_notes) {
        text += QLatin1Char('\n') + note;
    }
    return text;
}

/// As wide as usual; what is longer goes on in the next line.
void WallTip::fit() {
    const int width = m_look.pixels(usualWidth);
    const QFontMetrics small(m_look.theme.font(TextSize::caption));
    int height = m_look.pixels(2 * padding - 4 + titleHeight) +
                 static_cast<int>(m_lines.size()) * m_look.pixels(lineHeight) + m_look.pixels(13);
    for (const QString& note : m_notes) {
        height +=
            std::max(m_look.pixels(noteHeight), small
                                                    .boundingRect(0, 0, width - 2 * m_look.pixels(padding),
                                                                  1000, int(Qt::TextWordWrap), note)
                                                    .height()) +
            m_look.pixels(2);
    }
    const int around = 2 * m_look.pixels(shadow);
    resize(width + around, height + around);
}

void WallTip::placeBy(const QRect& cell, const QRect& room) {
    const int edge = m_look.pixels(shadow), gap = m_look.pixels(6);
    const bool mirrored = isRightToLeft();
    const int after = mirrored ? cell.left() - width() : cell.right() + 1;
    int x = after + (mirrored ? edge - gap : gap - edge);
    int y = cell.bottom() + gap - edge;
    if (x < room.left() || x + width() > room.right()) {
        x = mirrored ? cell.right() + gap - edge : cell.left() - width() + edge - gap;
    }
    if (y + height() > room.bottom()) {
        y = cell.top() - height() + edge - gap;
    }
    move(std::clamp(x, room.left() - edge, std::max(room.right() - width() + edge, room.left() - edge)),
         std::clamp(y, room.top() - edge, std::max(room.bottom() - height() + edge, room.top() - edge)));
}

void WallTip::paintLine(QPainter& painter, const QRect& line, const Line& told) const {
    const auto leading = int(Qt::AlignLeading | Qt::AlignVCenter) | int(Qt::TextSingleLine);
    const int bar = m_look.pixels(barWidth);
    const int valueRoom = m_look.pixels(56);
    const int nameRoom = line.width() - (told.share ? bar + valueRoom : 0);
    painter.setFont(m_look.theme.font(TextSize::label));
    painter.setPen(m_look.theme.secondaryText);
    const QFontMetrics metrics(painter.font());
    painter.drawText(fromStart(line, 0, nameRoom), leading, told.name);
    if (!told.place.isEmpty()) {
        const int start = metrics.horizontalAdvance(told.name) + m_look.pixels(7);
        painter.setFont(m_look.theme.font(TextSize::caption));
        const int room = nameRoom - start - m_look.pixels(6);
        painter.drawText(fromStart(line, start, room), leading,
                         QFontMetrics(painter.font()).elidedText(told.place, Qt::ElideMiddle, room));
        painter.setFont(m_look.theme.font(TextSize::label));
    }
    if (told.share) {
        const QRect place = fromStart(line, nameRoom, bar);
        const int thick = m_look.pixels(6);
        const int top = place.center().y() - thick / 2;
        const QRectF track(place.left(), top, bar, thick);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.theme.separator);
        painter.drawRoundedRect(track, thick / 2.0, thick / 2.0);
        QRectF full = track;
        full.setWidth(std::max<double>(thick, track.width() * std::clamp(*told.share, 0.0, 1.0)));
        if (isRightToLeft()) {
            full.moveRight(track.right());
        }
        painter.setBrush(m_look.loudBand(told.band));
        painter.drawRoundedRect(full, thick / 2.0, thick / 2.0);
    }
    painter.setPen(m_look.theme.text);
    painter.drawText(line, int(Qt::AlignTrailing | Qt::AlignVCenter) | int(Qt::TextSingleLine), told.value);
}

void WallTip::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int edge = m_look.pixels(shadow), inset = m_look.pixels(padding);
    const QRectF card = QRectF(rect()).adjusted(edge, edge, -edge, -edge);
    painter.setPen(Qt::NoPen);
    for (int i = edge; i > 0; --i) { // soft: a few faint rims
        painter.setBrush(QColor(0, 0, 0, m_look.isDark() ? 14 : 7));
        painter.drawRoundedRect(card.adjusted(-i, -i + 2, i, i + 1), 12 + i, 12 + i);
    }
    painter.setPen(QPen(m_look.theme.edge, 1));
    painter.setBrush(m_look.isDark() ? m_look.theme.fill : m_look.theme.card);
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), 12, 12);

    QRect line = card.toRect().adjusted(inset, inset - m_look.pixels(2), -inset, 0);
    line.setHeight(m_look.pixels(titleHeight));
    painter.setFont(m_look.theme.font(TextSize::caption));
    painter.setPen(m_look.theme.secondaryText);
    const int age = QFontMetrics(painter.font()).horizontalAdvance(m_age);
    painter.drawText(line, int(Qt::AlignTrailing | Qt::AlignVCenter), m_age);
    painter.setFont(m_look.theme.font(TextSize::body, QFont::Bold));
    painter.setPen(m_look.theme.text);
    const int room = line.width() - age - m_look.pixels(10);
    painter.drawText(fromStart(line, 0, room), int(Qt::AlignLeading | Qt::AlignVCenter),
                     QFontMetrics(painter.font()).elidedText(m_name, Qt::ElideRight, room));
    line.translate(0, m_look.pixels(titleHeight + 2));
    line.setHeight(m_look.pixels(lineHeight));
    for (const Line& told : m_lines) {
        paintLine(painter, line, told);
        line.translate(0, line.height());
    }
    line.translate(0, m_look.pixels(3));
    painter.fillRect(QRect(line.left(), line.top(), line.width(), 1), m_look.theme.separator);
    line.translate(0, m_look.pixels(6));
    painter.setFont(m_look.theme.font(TextSize::caption));
    painter.setPen(m_look.theme.secondaryText);
    for (const QString& note : m_notes) {
        QRect taken;
        line.setHeight(1000);
        painter.drawText(line, int(Qt::AlignLeading | Qt::AlignTop) | int(Qt::TextWordWrap), note, &taken);
        line.translate(0, std::max(m_look.pixels(noteHeight), taken.height()) + m_look.pixels(2));
    }
}

} // namespace vantor::hosts::wall
