// SPDX-License-Identifier: MIT
#include "hosts/widget/OutletBinding.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/qt/RingView.hpp"
#include "hosts/widget/FormWidget.hpp"

#include <QLabel>
#include <algorithm>
#include <utility>

namespace vantor::hosts::widget {

using platform::CGRect;
using platform::UIHostingView;
using platform::UIView;

namespace {

constexpr qsizetype usualLength = 11; // of a figure: its label has room for so many characters

/// What a figure shows until there is one.
QString shownText(const std::string& text) {
    return text.empty() ? QStringLiteral("–") : QString::fromStdString(text);
}

std::shared_ptr<UIHostingView> hostedView(const TEReportTableViewController::ChartContainer& chart) {
    return std::dynamic_pointer_cast<UIHostingView>(chart.hostingController()->view());
}

} // namespace

OutletBinding::OutletBinding(QWidget& form, std::shared_ptr<TEReportTableViewController> controller)
    : m_form(form), m_controller(std::move(controller)) {
    for (const Section& section : sections) {
        for (const SectionRow& row : section.rows) {
            bindRow(section, row);
        }
        QAbstractButton& button = bindAction(section.action);
        if (section.chart) {
            bindChart(*section.chart, button);
        }
    }
    for (const auto& [view, update] : m_updates) {
        update();
    }
    m_controller->view()->setChangeHandler([this](UIView& changed) {
        if (m_updates.contains(&changed) && std::ranges::find(m_changed, &changed) == m_changed.end()) {
            m_changed.push_back(&changed);
        }
    });
}

OutletBinding::~OutletBinding() {
    m_controller->view()->setChangeHandler({});
}

void OutletBinding::bindUpdate(const std::shared_ptr<UIView>& view, std::function<void()> update) {
    m_updates.emplace(view.get(), std::move(update));
}

void OutletBinding::bindRow(const Section& section, const SectionRow& row) {
    const auto& caption = (*m_controller).*row.caption.label;
    const auto& figure = (*m_controller).*row.figure.label;
    auto& shownCaption = formWidget<QLabel>(m_form, row.caption.name);
    auto& shownFigure = formWidget<QLabel>(m_form, row.figure.name);
    shownCaption.setTextFormat(Qt::PlainText);
    shownFigure.setTextFormat(Qt::PlainText);
    bindUpdate(caption,
               [&shownCaption, source = caption.get()] { shownCaption.setText(shownText(source->text())); });
    bindUpdate(
        figure, [this, &shownFigure, from = section.source, source = figure.get(), said = caption.get()] {
            shownFigure.setText(shownText(m_withoutFigures.contains(from) ? std::string() : source->text()));
            if (shownFigure.text().size() > usualLength) {
                shownFigure.setFixedWidth(std::max(shownFigure.width(), shownFigure.sizeHint().width()));
            }
            shownFigure.setAccessibleName(qt::valueText(said->text(), shownFigure.text().toStdString()));
        });
    if (row.stack) {
        auto& shownRow = formWidget<QWidget>(m_form, row.stack->name);
        const auto& stack = (*m_controller).*row.stack->stack;
        bindUpdate(stack, [&shownRow, source = stack.get()] { shownRow.setVisible(!source->isHidden()); });
    }
}

QAbstractButton& OutletBinding::bindAction(const ActionOutlet& outlet) {
    auto& button = formWidget<QAbstractButton>(m_form, outlet.name);
    QObject::connect(&button, &QAbstractButton::clicked, &m_form,
                     [this, action = outlet.action, &button] { ((*m_controller).*action)(&button); });
    return button;
}

/// A press on a ring is one on its section's button.
void OutletBinding::bindChart(const ChartOutlet& outlet, QAbstractButton& button) {
    auto& ring = formWidget<qt::RingView>(m_form, outlet.name);
    QObject::connect(&ring, &QAbstractButton::clicked, &button, &QAbstractButton::click);
    m_rings.push_back(&ring);
    m_charts.push_back(&outlet);
    bindUpdate(hostedView(*((*m_controller).*outlet.chart)()), [this] { m_ringsChanged = true; });
}

void OutletBinding::showFigures(const Section& section, bool has) {
    if (has == !m_withoutFigures.contains(section.source)) {
        return;
    }
    if (has) {
        m_withoutFigures.erase(section.source);
    } else {
        m_withoutFigures.insert(section.source);
    }
    for (const SectionRow& row : section.rows) {
        m_updates.at(((*m_controller).*row.figure.label).get())();
    }
    if (section.chart) {
        formWidget<qt::RingView>(m_form, section.chart->name).setHasFigure(has);
    }
}

bool OutletBinding::flush() {
    for (const UIView* view : std::exchange(m_changed, {})) {
        m_updates.at(view)();
    }
    return std::exchange(m_ringsChanged, false);
}

void OutletBinding::placeCharts(double pointScale) {
    const auto points = [pointScale](int pixels) { return pixels / pointScale; };
    m_controller->view()->setFrame({{0, 0}, {points(m_form.width()), points(m_form.height())}});
    for (std::size_t i = 0; i < m_rings.size(); ++i) {
        const QRect placeholder = m_rings[i]->contentsRect();
        const QPoint origin = m_rings[i]->mapTo(&m_form, placeholder.topLeft());
        const CGRect frame{{points(origin.x()), points(origin.y())},
                           {points(placeholder.width()), points(placeholder.height())}};
        ((*m_controller).*m_charts[i]->view)->setFrame(frame);
    }
    m_controller->view()->layoutIfNeeded();
    for (std::size_t i = 0; i < m_rings.size(); ++i) {
        const auto& chart = ((*m_controller).*m_charts[i]->chart)();
        const std::shared_ptr<UIHostingView> view = hostedView(*chart);
        const CGRect& outer = chart->frame();
        const CGRect& inner = view->frame();
        const QPoint corner = m_rings[i]->contentsRect().topLeft();
        m_rings[i]->setHostedView(view, {{points(corner.x()) + outer.origin.x + inner.origin.x,
                                          points(corner.y()) + outer.origin.y + inner.origin.y},
                                         inner.size});
    }
}

} // namespace vantor::hosts::widget
