// SPDX-License-Identifier: MIT
#include "hosts/app/Sidebar.hpp"

#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/HostText.hpp"

#include <QFocusEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <cmath>
#include <numbers>
#include <utility>

namespace vantor::hosts::app {

namespace {

// Points, from the start of an entry.
constexpr double entryWidth = 184, entryHeight = 48, entryRadius = 12, ringStart = 12, nameStart = 60,
                 endMargin = 12;
constexpr std::array names{"host_MEMORY", "host_STORAGE", "app_PROCESSOR", "app_SETTINGS"};

/// A wheel with teeth, about the origin.
QPainterPath gear() {
    constexpr int teeth = 8;
    constexpr double root = 7.6, tip = 10.4, hole = 3.6, step = 2 * std::numbers::pi / teeth;
    QPainterPath path;
    for (int i = 0; i < teeth; ++i) {
        for (const auto& [angle, radius] :
             {std::pair(-0.33, root), std::pair(-0.2, tip), std::pair(0.2, tip), std::pair(0.33, root)}) {
            const double at = (i + angle) * step;
            const QPointF point(radius * std::sin(at), -radius * std::cos(at));
            path.elementCount() == 0 ? path.moveTo(point) : path.lineTo(point);
        }
    }
    path.closeSubpath();
    path.addEllipse(QPointF(), hole, hole);
    return path;
}

} // namespace

SidebarEntry::SidebarEntry(const QString& name, std::shared_ptr<ArcChartViewModel> model, QWidget* parent)
    : QAbstractButton(parent) {
    setText(name);
    setAccessibleName(name);
    setCheckable(true);
    setAutoExclusive(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::ClickFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    if (model) {
        m_ring = new Ring(std::move(model), smallRing, this);
    }
}

void SidebarEntry::setPercentage(const QString& text) {
    if (std::exchange(m_percentage, text) != text) {
        setAccessibleName(qt::valueText(this->text().toStdString(), text.toStdString()));
        update();
    }
}

QColor SidebarEntry::ground() const {
    if (isChecked()) {
        return m_look.theme.appearance == platform::Appearance::light ? m_look.theme.card : m_look.theme.fill;
    }
    return underMouse() ? m_look.theme.hoverFill : m_look.theme.backdrop;
}

/// The ring paints its own ground, which is the entry's.
void SidebarEntry::refreshGround() {
    if (m_ring != nullptr) {
        m_ring->setGround(ground());
    }
    update();
}

void SidebarEntry::setLook(const Look& look) {
    m_look = look;
    setFixedSize(sizeHint());
    if (m_ring != nullptr) {
        m_ring->setGround(ground());
        const int side = look.pixels(smallRing.diameter);
        m_ring->move(placed(look.pixels(ringStart), side).x(), (height() - side) / 2);
    }
    update();
}

QSize SidebarEntry::sizeHint() const {
    const int name = QFontMetrics(m_look.theme.font(TextSize::body, QFont::Bold)).horizontalAdvance(text());
    const int figure =
        m_ring == nullptr
            ? 0
            : QFontMetrics(m_look.theme.font(TextSize::label)).horizontalAdvance(QStringLiteral("100% "));
    return {std::max(m_look.pixels(entryWidth), m_look.pixels(nameStart + endMargin) + name + figure),
            m_look.pixels(entryHeight)};
}

QRect SidebarEntry::placed(int x, int width) const {
    return {layoutDirection() == Qt::RightToLeft ? this->width() - x - width : x, 0, width, height()};
}

bool SidebarEntry::event(QEvent* event) {
    const bool taken = QAbstractButton::event(event);
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::FocusOut:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        refreshGround();
        break;
    default:
        break;
    }
    return taken;
}

void SidebarEntry::checkStateSet() {
    refreshGround();
}

void SidebarEntry::nextCheckState() {
    setChecked(true);
}

void SidebarEntry::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = qt::isKeyboardFocus(*event, m_keyboardFocus);
    QAbstractButton::focusInEvent(event);
    update();
}

void SidebarEntry::paintSign(QPainter& painter) const {
    painter.save();
    const double scale = m_look.theme.pointScale;
    const QRect place = placed(m_look.pixels(ringStart), m_look.pixels(smallRing.diameter));
    painter.translate(QRectF(place).center());
    painter.scale(scale, scale);
    painter.strokePath(gear(), QPen(isChecked() ? m_look.theme.text : m_look.theme.secondaryText, 1.7,
                                    Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

void SidebarEntry::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qt::Theme& theme = m_look.theme;
    const double radius = entryRadius * theme.pointScale;
    const bool focused = m_keyboardFocus && hasFocus() && window()->isActiveWindow();
    const bool hasEdge = isChecked() && theme.appearance == platform::Appearance::light;
    painter.setPen(focused   ? QPen(theme.accent, 2 * theme.pointScale)
                   : hasEdge ? QPen(theme.edge)
                             : QPen(Qt::NoPen));
    painter.setBrush(ground());
    const double inset = focused ? 1 : 0.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
    if (m_ring == nullptr) {
        paintSign(painter);
    }
    const int start = m_look.pixels(nameStart), end = m_look.pixels(endMargin);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const auto side = [mirrored](bool atStart) {
        return Qt::AlignAbsolute | Qt::AlignVCenter | (atStart != mirrored ? Qt::AlignLeft : Qt::AlignRight);
    };
    painter.setFont(theme.font(TextSize::body, isChecked() ? QFont::Bold : QFont::Normal));
    painter.setPen(theme.text);
    painter.drawText(placed(start, width() - start - end), int(side(true)), text());
    painter.setFont(theme.font(TextSize::label));
    painter.setPen(theme.secondaryText);
    painter.drawText(placed(start, width() - start - end), int(side(false)), m_percentage);
}

Sidebar::Sidebar(const Models& models, const std::function<void(PageKind)>& chosen) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(12, Grid::margin, 12, Grid::margin);
    column->setSpacing(Grid::unit);
    for (std::size_t i = 0; i < pageCount; ++i) {
        m_entries.at(i) = new SidebarEntry(qt::hostText(names.at(i)), models.at(i), this);
        column->addWidget(m_entries.at(i));
        connect(m_entries.at(i), &QAbstractButton::toggled, this, [this, chosen, i](bool isChosen) {
            // Tab goes to the page that is shown, arrow keys from there to the others.
            m_entries.at(i)->setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
            if (isChosen) {
                chosen(static_cast<PageKind>(i));
            }
        });
    }
    column->addStretch();
}

void Sidebar::setLook(const Look& look) {
    m_look = look;
    update();
}

void Sidebar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const int line = layoutDirection() == Qt::RightToLeft ? 0 : width() - 1;
    painter.fillRect(line, 0, 1, height(), m_look.theme.edge);
}

} // namespace vantor::hosts::app
