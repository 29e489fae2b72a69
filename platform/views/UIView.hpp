// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/CGGeometry.hpp"
#include "platform/drawing/UIColor.hpp"
#include "platform/views/NSLayoutConstraint.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantor::platform {

/// A node of the view tree: a retained value with a frame. There is no native handle in it; a host writes
/// frames and events in and reads everything else out. Always held by std::shared_ptr. Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
public:
    explicit UIView(const CGRect& frame = {});
    virtual ~UIView();
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    [[nodiscard]] const CGRect& frame() const { return m_frame; } ///< in the superview's coordinates
    void setFrame(const CGRect& frame);
    [[nodiscard]] CGRect bounds() const { return {{0, 0}, m_frame.size}; } ///< in its own coordinates

    [[nodiscard]] std::shared_ptr<UIView> superview() const { return m_superview.lock(); }
    [[nodiscard]] const std::vector<std::shared_ptr<UIView>>& subviews() const { return m_subviews; }
    void addSubview(const std::shared_ptr<UIView>& view); ///< takes it out of its old superview first
    void removeFromSuperview();
    /// Called when the view has come into a superview or has left one.
    virtual void didMoveToSuperview() {}

    [[nodiscard]] bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    [[nodiscard]] const std::optional<UIColor>& backgroundColor() const { return m_background; }
    void setBackgroundColor(const UIColor& color);

    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) { m_translates = translates; }
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return m_translates; }
    [[nodiscard]] NSLayoutAnchor leftAnchor() { return anchor(LayoutAttribute::left); }
    [[nodiscard]] NSLayoutAnchor rightAnchor() { return anchor(LayoutAttribute::right); }
    [[nodiscard]] NSLayoutAnchor leadingAnchor() { return anchor(LayoutAttribute::leading); }
    [[nodiscard]] NSLayoutAnchor trailingAnchor() { return anchor(LayoutAttribute::trailing); }
    [[nodiscard]] NSLayoutAnchor topAnchor() { return anchor(LayoutAttribute::top); }
    [[nodiscard]] NSLayoutAnchor bottomAnchor() { return anchor(LayoutAttribute::bottom); }

    /// The active constraints whose first item is this view.
    [[nodiscard]] const std::vector<NSLayoutConstraint>& constraints() const { return m_constraints; }
    /// Gives every view below this one the frame that its constraints demand.
    void layoutIfNeeded();

    virtual void invalidateIntrinsicContentSize() { setNeedsDisplay(); }

    /// Says that this view looks different now. The signal rises to the root of the tree.
    void setNeedsDisplay();
    /// Called at the root for every view of the tree that changed, with that view.
    void setChangeHandler(std::function<void(UIView& changed)> handler) { m_changed = std::move(handler); }

private:
    friend class NSLayoutConstraint;
    NSLayoutAnchor anchor(LayoutAttribute attribute);
    void layOut(UIView& subview) const;

    CGRect m_frame;
    std::weak_ptr<UIView> m_superview;
    std::vector<std::shared_ptr<UIView>> m_subviews;
    std::vector<NSLayoutConstraint> m_constraints;
    std::optional<UIColor> m_background;
    std::function<void(UIView&)> m_changed;
    bool m_hidden = false;
    bool m_translates = true;
};

} // namespace vantor::platform
