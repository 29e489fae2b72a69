// SPDX-License-Identifier: MIT
#include "platform/views/UIView.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform {

UIView::UIView(const CGRect& frame) : m_frame(frame) {}

UIView::~UIView() = default;

void UIView::setFrame(const CGRect& frame) {
    if (std::exchange(m_frame, frame) != frame) {
        setNeedsDisplay();
    }
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
    view->removeFromSuperview();
    m_subviews.push_back(view);
    view->m_superview = weak_from_this();
    view->didMoveToSuperview();
    setNeedsDisplay();
}

void UIView::removeFromSuperview() {
    const std::shared_ptr<UIView> parent = superview();
    if (parent == nullptr) {
        return;
    }
    const std::shared_ptr<UIView> self = shared_from_this(); // the superview may hold the last reference
    std::erase(parent->m_subviews, self);
    m_superview.reset();
    didMoveToSuperview();
    parent->setNeedsDisplay();
}

void UIView::setHidden(bool hidden) {
    if (std::exchange(m_hidden, hidden) != hidden) {
        setNeedsDisplay();
    }
}

void UIView::setBackgroundColor(const UIColor& color) {
    if (m_background != color) {
        m_background = color;
        setNeedsDisplay();
    }
}

NSLayoutAnchor UIView::anchor(LayoutAttribute attribute) {
    return {weak_from_this(), attribute};
}

void UIView::layoutIfNeeded() {
    for (const std::shared_ptr<UIView>& subview : m_subviews) {
        layOut(*subview);
        subview->layoutIfNeeded();
    }
}

void UIView::layOut(UIView& subview) const {
    if (subview.m_constraints.empty()) {
        return;
    }
    double left = subview.m_frame.origin.x;
    double top = subview.m_frame.origin.y;
    double right = CGRectGetMaxX(subview.m_frame);
    double bottom = CGRectGetMaxY(subview.m_frame);
    for (const NSLayoutConstraint& constraint : subview.m_constraints) {
        if (constraint.secondAnchor().item.lock().get() != this) {
            continue;
        }
        switch (constraint.firstAnchor().attribute) {
        case LayoutAttribute::left:
        case LayoutAttribute::leading:
            left = constraint.constant();
            break;
        case LayoutAttribute::right:
        case LayoutAttribute::trailing:
            right = m_frame.size.width + constraint.constant();
            break;
        case LayoutAttribute::top:
            top = constraint.constant();
            break;
        case LayoutAttribute::bottom:
            bottom = m_frame.size.height + constraint.constant();
            break;
        }
    }
    subview.setFrame({{left, top}, {std::max(right - left, 0.0), std::max(bottom - top, 0.0)}});
}

void UIView::setNeedsDisplay() {
    UIView* root = this;
    std::shared_ptr<UIView> held;
    while (std::shared_ptr<UIView> parent = root->superview()) {
        root = parent.get();
        held = std::move(parent);
    }
    if (root->m_changed) {
        root->m_changed(*this);
    }
}

} // namespace vantor::platform
