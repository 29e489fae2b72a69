// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetCard.hpp"

#include "controller/ByteText.hpp"
#include "hosts/common/WidgetSizes.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/MessageLine.hpp"
#include "hosts/qt/RingAccessible.hpp"
#include "hosts/widget/FormWidget.hpp"
#include "settings/DeepLink.hpp"
#include "ui_WidgetForm.h"

#include <QBitmap>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace vantor::hosts::widget {

namespace {

constexpr double cornerRadius = 18; // points
constexpr double rowHeight = 19;
constexpr double headingHeight = 22;
constexpr double noteHeight = 18;
constexpr int mostRows = 4; // of a section beside which another one stands
constexpr double narrowest = 400;

std::unique_ptr<Ui::WidgetForm> filledForm(QWidget& card) {
    auto form = std::make_unique<Ui::WidgetForm>();
    form->setupUi(&card);
    return form;
}

void setColors(QWidget& widget, const QColor& text, const QColor& ground) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, ground);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
}

} // namespace

WidgetCard::WidgetCard(std::shared_ptr<TEReportTableViewController> controller, QWidget* parent)
    : QWidget(parent),
      m_form(filledForm(*this)),
      m_lengths(*this),
      m_binding(*this, std::move(controller)),
      m_animator(m_binding.rings()),
      m_message(new qt::MessageLine(this)) {
    qt::installRingAccessibility();
    nameSections();
    for (qt::RingView* ring : m_binding.rings()) {
        ring->installEventFilter(this);
    }
    m_form->displayModeButton->setVisible(false);
    connect(m_form->displayModeButton, &QAbstractButton::clicked, this, [this] {
        if (m_toggle) {
            m_toggle();
        }
    });
    connect(m_form->manualInfoRefresh, &QAbstractButton::clicked, m_form->manualInfoRefresh,
            &qt::GlyphButton::confirm);
    connect(m_form->memoryTotal, &QAbstractButton::clicked, this, [this] { openMemoryPage(); });
}

void WidgetCard::openMemoryPage() {
    if (const auto& context = m_binding.controller().extensionContext()) {
        context->openURL(*platform::NSURL::URLWithString(DeepLink::showRam), nullptr);
    }
}

WidgetCard::~WidgetCard() = default;

void WidgetCard::scaleForm() {
    m_lengths.scale(m_theme);
    m_form->ringRow->setFixedHeight(m_theme.pixels(common::compactHeight));
    m_form->hairline->setFixedHeight(1);
    // Room for the row that a preference shows: nothing below moves when it comes.
    m_form->sectionGrid->setRowMinimumHeight(0, m_theme.pixels(headingHeight) +
                                                    mostRows * m_theme.pixels(rowHeight));
}

void WidgetCard::fitButtons() {
    for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{
             m_form->manualInfoRefresh, m_form->displayModeButton, m_form->memoryTotal, m_form->openApp,
             m_form->showCpuChart}) {
        button->setFixedSize(button->sizeHint());
    }
}

/// Opaque: a figure that changes is painted without what lies below it, and takes its row no other size.
void WidgetCard::style(QLabel& label, double size, QFont::Weight weight, const QColor& color, double height) {
    label.setFont(m_theme.font(size, weight));
    setColors(label, color, m_theme.card);
    label.setFixedHeight(m_theme.pixels(height));
}

void WidgetCard::styleLabels() {
    // By the card's direction: a label alone would go by that of its text, and "10 GB" has none.
    const auto end = layoutDirection() == Qt::RightToLeft ? Qt::AlignLeft : Qt::AlignRight;
    for (const Section& section : sections) {
        style(formWidget<QLabel>(*this, section.heading), qt::TypeSize::heading, QFont::Bold, m_theme.text,
              headingHeight);
        for (const SectionRow& row : section.rows) {
            style(formWidget<QLabel>(*this, row.caption.name), qt::TypeSize::body, QFont::Normal,
                  m_theme.secondaryText, rowHeight);
            auto& figure = formWidget<QLabel>(*this, row.figure.name);
            style(figure, qt::TypeSize::body, QFont::Normal, m_theme.text, rowHeight);
            figure.setFixedWidth(figureWidth());
            figure.setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter | end);
        }
    }
    style(*m_form->lowPriorityShare, qt::TypeSize::small, QFont::Normal, m_theme.secondaryText, noteHeight);
    if (m_line != nullptr) {
        style(*m_line, qt::TypeSize::small, QFont::Normal, m_theme.secondaryText, lineHeight());
        m_line->setAutoFillBackground(false); // the card's corners are round
        m_line->setContentsMargins(m_theme.pixels(20), m_theme.pixels(5), m_theme.pixels(20), 0);
    }
    setColors(*m_form->hairline, m_theme.separator, m_theme.separator);
}

void WidgetCard::setTheme(const qt::Theme& theme) {
    m_theme = theme;
    scaleForm();
    styleLabels();
    for (QAbstractButton* child : findChildren<QAbstractButton*>()) {
        if (auto* const button = dynamic_cast<qt::Button*>(child)) {
            button->setTheme(theme);
        }
    }
    fitButtons();
    for (qt::RingView* ring : m_binding.rings()) {
        ring->setTheme(theme);
    }
    m_message->setTheme(theme);
    update();
}

int WidgetCard::figureWidth() const {
    const std::string widest = trafficText(888'880'000'000) + "/s"; // that a row has to hold
    return QFontMetrics(m_theme.font(qt::TypeSize::body)).horizontalAdvance(QString::fromStdString(widest));
}

/// Both columns are as wide as the widest section needs, so that they line up.
double WidgetCard::neededWidth() const {
    const QGridLayout& grid = *m_form->sectionGrid;
    int column = 0;
    for (int i = 0; i < grid.count(); ++i) {
        column = std::max(column, qt::leastWidth(*grid.itemAt(i)));
    }
    const QMargins margins = grid.contentsMargins();
    const int width = 2 * column + grid.horizontalSpacing() + margins.left() + margins.right();
    return std::max(narrowest, std::ceil(width / m_theme.pointScale));
}

void WidgetCard::setContentSize(platform::CGSize points) {
    layout()->setEnabled(true);
    m_form->details->setVisible(m_expanded);
    setFixedSize(m_theme.pixels(points.width), m_theme.pixels(points.height));
}

void WidgetCard::showUpper(int height) {
    layout()->activate(); // what waits to be laid out
    layout()->setEnabled(false);
    setFixedHeight(height);
}

void WidgetCard::setExpanded(bool expanded) {
    m_expanded = expanded;
    m_form->displayModeButton->setGlyph(expanded ? qt::Glyph::less : qt::Glyph::more);
    const QString name = qt::hostText(expanded ? "host_SHOWLESS" : "host_SHOWMORE");
    m_form->displayModeButton->setText(name);
    setTip(*m_form->displayModeButton, name);
}

void WidgetCard::setCanExpand(bool can) {
    m_form->displayModeButton->setVisible(can);
}

std::vector<QAbstractButton*> WidgetCard::actionButtons() const {
    std::vector<QAbstractButton*> buttons;
    for (const Section& section : sections) {
        auto& button = formWidget<QAbstractButton>(*this, section.action.name);
        buttons.insert(section.chart ? buttons.end() : buttons.begin(), &button);
    }
    return buttons;
}

QAbstractButton& WidgetCard::refreshButton() const {
    return *m_form->manualInfoRefresh;
}

QAbstractButton& WidgetCard::displayModeButton() const {
    return *m_form->displayModeButton;
}

void WidgetCard::flush() {
    if (m_binding.flush()) {
        m_animator.start();
    }
    showNotes();
    showStorageTips();
}

void WidgetCard::showFailures(const std::vector<platform::SourceFailure>& failures) {
    if (failures == m_failures) {
        return;
    }
    m_failures = failures;
    for (const Section& section : sections) {
        const auto failed = std::ranges::find(failures, section.source, &platform::SourceFailure::source);
        showHeading(section, failed != failures.end() ? &*failed : nullptr);
        m_binding.showFigures(section, failed == failures.end());
    }
}

void WidgetCard::showMessage(const QString& text) {
    m_message->showText(text);
}

void WidgetCard::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_theme.edge);
    painter.setBrush(m_theme.card);
    const double radius = cornerRadius * m_theme.pointScale;
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    if (m_form->details->isVisibleTo(this)) {
        const int inset = m_theme.pixels(20);
        painter.fillRect(inset, m_theme.pixels(common::compactHeight + lineHeight()), width() - 2 * inset, 1,
                         m_theme.separator);
    }
}

/// Rounded rectangles one upon the other, each a pixel smaller, so that it gets darker towards the card.
void WidgetCard::paintShadow(QPainter& painter, const QRegion& region, int reach) const {
    const double radius = cornerRadius * m_theme.pointScale;
    const int round = static_cast<int>(radius);
    const QRect card = geometry();
    painter.setClipRegion(region - card.adjusted(round, 0, -round, 0) - card.adjusted(0, round, 0, -round));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr double darkest = 0.035; // of one of them
    const double drop = reach / 6.0;  // the light comes from above
    for (int i = reach - 1; i > 0; --i) {
        const double out = i * (1 - drop / reach);
        painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(darkest * (reach - i) / reach)));
        painter.drawRoundedRect(QRectF(card).adjusted(-out, -out + drop, out, out + drop), radius + out,
                                radius + out);
    }
}

QRegion WidgetCard::shape() const {
    QBitmap covered(size());
    covered.clear();
    QPainter painter(&covered);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::color1);
    const double radius = cornerRadius * m_theme.pointScale;
    painter.drawRoundedRect(rect(), radius, radius);
    painter.end();
    return {covered};
}

void WidgetCard::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_message->place();
}

/// A ring's place is known when the layout has given it its size.
bool WidgetCard::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        m_binding.placeCharts(m_theme.pointScale);
    } else if (auto* const ring =
                   event->type() == QEvent::ToolTip ? dynamic_cast<qt::RingView*>(object) : nullptr) {
        showRingTip(*ring);
    }
    return QWidget::eventFilter(object, event);
}

} // namespace vantor::hosts::widget
