// SPDX-License-Identifier: MIT
#include "hosts/wall/WallFoot.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/wall/WallWords.hpp"

#include <QFontMetrics>
#include <QPainter>

namespace vantor::hosts::wall {

using fleet::FleetOrder;

namespace {

QString sortWord(FleetOrder order) {
    const auto figure = [](platform::FleetFigure of) { return figureName(of); };
    switch (order) {
    case FleetOrder::worst:
        return qt::hostText("wall_WORST");
    case FleetOrder::name:
        return qt::hostText("wall_NAME");
    case FleetOrder::memory:
        return figure(platform::FleetFigure::memory);
    case FleetOrder::storage:
        return figure(platform::FleetFigure::storage);
    case FleetOrder::processor:
        return figure(platform::FleetFigure::processor);
    case FleetOrder::network:
        break;
    }
    return qt::hostText("host_NETWORK");
}

} // namespace

void WallFoot::setLook(const WallLook& look) {
    m_painter.setLook(look, devicePixelRatioF());
    setFixedHeight(look.pixels(Grid::footer));
    update();
}

void WallFoot::tell(FleetOrder order, Density density) {
    m_order = order;
    m_meaning =
        density <= Density::rings ? density == Density::rings ? ringsText() : QString() : colorText(order);
    update();
}

std::vector<WallFoot::Key> WallFoot::keys() const {
    QString orders = qt::hostText("wall_SORTBY");
    for (const FleetOrder order : {FleetOrder::worst, FleetOrder::name, FleetOrder::memory,
                                   FleetOrder::storage, FleetOrder::processor, FleetOrder::network}) {
        orders += (order == FleetOrder::worst ? QStringLiteral(" ") : QStringLiteral(", ")) + sortWord(order);
    }
    return {{QStringLiteral("/"), qt::hostText("wall_FILTER")},
            {QStringLiteral("+ \u2212"), qt::hostText("wall_DENSITY")},
            {QStringLiteral("Enter"), qt::hostText("wall_OPEN")},
            {QStringLiteral("Esc"), qt::hostText("wall_BACK")},
            {QStringLiteral("W N R S C T"), orders, sortWord(m_order)},
            {QStringLiteral("\u2423"), qt::hostText("wall_FOLD")}};
}

/// Marks a word in a line of text, by the direction of the language.
void WallFoot::underline(QPainter& painter, const QRect& line, int start, int width) {
    const WallLook& look = m_painter.look();
    const QRect place = fromStart(line, start, width);
    painter.fillRect(place.left(), line.center().y() + look.pixels(9), place.width(), look.pixels(2),
                     look.theme.accent);
}

void WallFoot::paintEvent(QPaintEvent* /*event*/) {
    const WallLook& look = m_painter.look();
    QPainter painter(this);
    painter.fillRect(rect(), look.theme.backdrop);
    painter.fillRect(0, 0, width(), 1, look.theme.separator);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont font = look.theme.font(TextSize::caption);
    const QFontMetrics metrics(font);
    const int margin = look.pixels(Grid::margin), inset = look.pixels(6), tall = look.pixels(20);
    const int meaning = m_meaning.isEmpty() ? 0 : metrics.horizontalAdvance(m_meaning) + 2;
    painter.setPen(look.theme.secondaryText);
    m_painter.texts().draw(painter, fromStart(rect(), width() - margin - meaning, meaning), m_meaning, font,
                           Qt::AlignTrailing);
    const int room = width() - 2 * margin - meaning - look.pixels(16);
    int start = margin;
    for (const Key& key : keys()) {
        const int cap = metrics.horizontalAdvance(key.letters) + 2 * inset;
        const int word = metrics.horizontalAdvance(key.word) + 2;
        if (start + cap + look.pixels(8) + word > margin + room) {
            continue;
        }
        const QRect place = fromStart(rect(), start, cap);
        const int top = (height() - tall) / 2;
        const QRectF pill(place.left() + 0.5, top + 0.5, cap - 1, tall - 1);
        painter.setPen(QPen(look.theme.edge, 1));
        painter.setBrush(look.isDark() ? look.theme.fill : look.theme.card);
        painter.drawRoundedRect(pill, 4 * look.theme.pointScale, 4 * look.theme.pointScale);
        painter.setPen(look.theme.text);
        m_painter.texts().draw(painter, place, key.letters, font, Qt::AlignHCenter);
        painter.setPen(look.theme.secondaryText);
        const QRect beside = fromStart(rect(), start + cap + look.pixels(8), word);
        m_painter.texts().draw(painter, beside, key.word, font);
        if (const qsizetype at = key.current.isEmpty() ? -1 : key.word.lastIndexOf(key.current); at >= 0) {
            underline(painter, beside, metrics.horizontalAdvance(key.word.left(at)),
                      metrics.horizontalAdvance(key.current));
        }
        start += cap + look.pixels(8) + word + look.pixels(22);
    }
}

} // namespace vantor::hosts::wall
