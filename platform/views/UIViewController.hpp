// SPDX-License-Identifier: MIT
#pragma once

#include "platform/views/NSExtensionContext.hpp"
#include "platform/views/UIView.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vantor::platform {

/// Stand-ins for the arguments of the platform's two controller initialisers: which archive, which bundle.
struct NSCoder {};
struct NSBundle {};

/// Owns a view and its child controllers. Always held by std::shared_ptr. Main thread only.
class UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    UIViewController() = default;
    UIViewController(const std::string& nibName, const NSBundle* bundle); ///< `initWithNibName:bundle:`
    explicit UIViewController(const NSCoder& coder);                      ///< `initWithCoder:`
    virtual ~UIViewController();
    UIViewController(const UIViewController&) = delete;
    UIViewController& operator=(const UIViewController&) = delete;

    /// The root view. The first call makes it and then calls `viewDidLoad`.
    std::shared_ptr<UIView> view();
    [[nodiscard]] bool isViewLoaded() const { return m_view != nullptr; }
    void setView(std::shared_ptr<UIView> view) { m_view = std::move(view); }

    /// What makes the root view when it is first asked for, by calling `setView`. Without a loader, and
    /// without a `setView` before, the root view is an empty one.
    void setViewLoader(std::function<void()> loader) { m_loader = std::move(loader); }
    /// Called once, when the root view is there.
    virtual void viewDidLoad() {}

    void addChildViewController(const std::shared_ptr<UIViewController>& child);
    void removeFromParentViewController();
    virtual void willMoveToParentViewController(UIViewController* parent);
    virtual void didMoveToParentViewController(UIViewController* parent);
    [[nodiscard]] UIViewController* parentViewController() const { return m_parent; }
    [[nodiscard]] const std::vector<std::shared_ptr<UIViewController>>& childViewControllers() const {
        return m_children;
    }

    /// The size the controller would like, in points.
    [[nodiscard]] CGSize preferredContentSize() const { return m_preferredContentSize; }
    void setPreferredContentSize(CGSize size);
    void setPreferredContentSizeHandler(std::function<void(CGSize)> handler) {
        m_sizeChanged = std::move(handler);
    }

    /// The host's side of an extension; null when the controller does not run as one.
    [[nodiscard]] const std::shared_ptr<NSExtensionContext>& extensionContext() const { return m_context; }
    void setExtensionContext(std::shared_ptr<NSExtensionContext> context) { m_context = std::move(context); }

private:
    std::shared_ptr<UIView> m_view;
    std::function<void()> m_loader;
    std::vector<std::shared_ptr<UIViewController>> m_children;
    UIViewController* m_parent = nullptr; // the parent holds the child; it clears this when it goes
    CGSize m_preferredContentSize;
    std::function<void(CGSize)> m_sizeChanged;
    std::shared_ptr<NSExtensionContext> m_context;
};

} // namespace vantor::platform
