// SPDX-License-Identifier: MIT
#include "hosts/widget/OutletBinding.hpp"

#include "controller/Outlets.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/RingView.hpp"
#include "platform/core/FatalStop.hpp"

#include <QLabel>
#include <algorithm>
#include <utility>

namespace vantor::hosts::widget {

using platform::CGRect;
using platform::UIHostingView;
using platform::UIView;

namespace {

/// What a figure shows until there is one.
QString shownText(const std::string& text) {
    return text.empty() ? QStringLiteral("–") : QString::fromStdString(text);
}

template<class Widget>
Widget& widgetNamed(QWidget& form, std::string_view name) {
    auto* widget = dynamic_cast<Widget*>(
        form.findChild<QWidget*>(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()))));
    if (widget == nullptr) {
        platform::fatalStop("the desktop's form has no widget for an outlet");
    }
    return *widget;
}

std::shared_ptr<UIHostingView> hostedView(const TEReportTableViewController::ChartContainer& chart) {
    return std::dynamic_pointer_cast<UIHostingView>(chart.hostingController()->view());
}

} // namespace

OutletBinding::OutletBinding(QWidget& form, std::shared_ptr<TEReportTableViewController> controller)
    : m_form(form), m_controller(std::move(controller)) {
    bindLabels();
    bindReleasableRow();
    bindCharts();
    bindActions();
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

/// The caption beside a figure ("usedRAMLabel" has "usedRAMTitleLabel"); null for a caption.
const platform::UILabel* OutletBinding::captionOf(std::string_view figure) const {
    std::string name(figure.substr(0, figure.size() - std::string_view("Label").size()));
    name += "TitleLabel";
    const auto found = std::ranges::find(labelOutlets, name, &LabelOutlet::name);
    return found == labelOutlets.end() ? nullptr : ((*m_controller).*found->label).get();
}

void OutletBinding::bindLabels() {
    for (const LabelOutlet& outlet : labelOutlets) {
        const auto& label = (*m_controller).*outlet.label;
        auto& shown = widgetNamed<QLabel>(m_form, outlet.name);
        shown.setTextFormat(Qt::PlainText);
        bindUpdate(label, [&shown, source = label.get(), caption = captionOf(outlet.name)] {
            shown.setText(shownText(source->text()));
            if (caption != nullptr) {
                shown.setAccessibleName(qt::valueText(caption->text(), shown.text().toStdString()));
            }
        });
    }
}

void OutletBinding::bindReleasableRow() {
    auto& row = widgetNamed<QWidget>(m_form, releasableRowName);
    const auto& view = m_controller->releasableSTORAGEStackView;
    bindUpdate(view, [&row, source = view.get()] { row.setVisible(!source->isHidden()); });
}

void OutletBinding::bindCharts() {
    for (const ViewOutlet& outlet : chartOutlets) {
        m_rings.push_back(&widgetNamed<qt::RingView>(m_form, outlet.name));
        const auto& chart = ((*m_controller).*outlet.chart)();
        bindUpdate(hostedView(*chart), [this] { m_ringsChanged = true; });
    }
}

void OutletBinding::bindActions() {
    for (const ActionOutlet& outlet : actionOutlets) {
        auto& button = widgetNamed<QAbstractButton>(m_form, outlet.name);
        QObject::connect(&button, &QAbstractButton::clicked, &m_form,
                         [this, action = outlet.action, &button] { ((*m_controller).*action)(&button); });
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
        const QPoint origin = m_rings[i]->mapTo(&m_form, QPoint(0, 0));
        const CGRect frame{{points(origin.x()), points(origin.y())},
                           {points(m_rings[i]->width()), points(m_rings[i]->height())}};
        ((*m_controller).*chartOutlets[i].view)->setFrame(frame);
    }
    m_controller->view()->layoutIfNeeded();
    for (std::size_t i = 0; i < m_rings.size(); ++i) {
        const auto& chart = ((*m_controller).*chartOutlets[i].chart)();
        const std::shared_ptr<UIHostingView> view = hostedView(*chart);
        const CGRect& outer = chart->frame();
        const CGRect& inner = view->frame();
        m_rings[i]->setHostedView(
            view, {{outer.origin.x + inner.origin.x, outer.origin.y + inner.origin.y}, inner.size});
    }
}

} // namespace vantor::hosts::widget
