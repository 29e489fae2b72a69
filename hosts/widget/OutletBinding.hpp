// SPDX-License-Identifier: MIT
#pragma once

#include "controller/Sections.hpp"

#include <functional>
#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

class QAbstractButton;
class QWidget;

namespace vantor::hosts::qt {
class RingView;
}

namespace vantor::hosts::widget {

/// Ties the native widgets of a form to the view tree of a controller by their names: texts, visibility and
/// pictures flow from the tree to the widgets, frames and presses the other way. A view that says it changed
/// is only noted; `flush` then brings its widget up to date, once, whatever happened to it in between.
class OutletBinding {
public:
    /// The controller's view is loaded. An outlet or action without a widget of its name is fatal.
    OutletBinding(QWidget& form, std::shared_ptr<TEReportTableViewController> controller);
    ~OutletBinding();
    OutletBinding(const OutletBinding&) = delete;
    OutletBinding& operator=(const OutletBinding&) = delete;

    /// True when a ring changed, which then wants to be shown by its animator.
    bool flush();
    /// Writes the placeholders' frames, in points, into the tree, and gives each ring what the constraints
    /// make of it.
    void placeCharts(double pointScale);

    /// Shows a section's figures, or that it has none.
    void showFigures(const Section& section, bool has);

    [[nodiscard]] TEReportTableViewController& controller() { return *m_controller; }
    [[nodiscard]] const std::vector<qt::RingView*>& rings() const { return m_rings; }

private:
    void bindRow(const Section& section, const SectionRow& row);
    QAbstractButton& bindAction(const ActionOutlet& outlet);
    void bindChart(const ChartOutlet& outlet, QAbstractButton& button);
    void bindUpdate(const std::shared_ptr<platform::UIView>& view, std::function<void()> update);

    QWidget& m_form;
    std::shared_ptr<TEReportTableViewController> m_controller;
    std::vector<qt::RingView*> m_rings; // in the order of the sections
    std::vector<const ChartOutlet*> m_charts;
    std::unordered_map<const platform::UIView*, std::function<void()>> m_updates;
    std::vector<const platform::UIView*> m_changed;
    std::set<platform::Source> m_withoutFigures;
    bool m_ringsChanged = false;
};

} // namespace vantor::hosts::widget
