// SPDX-License-Identifier: MIT
#include "platform/views/UIViewController.hpp"

#include <utility>

namespace vantor::platform {

UIViewController::UIViewController(const std::string& /*nibName*/, const NSBundle* /*bundle*/) {}

UIViewController::UIViewController(const NSCoder& /*coder*/) {}

UIViewController::~UIViewController() {
    for (const std::shared_ptr<UIViewController>& child : m_children) {
        child->m_parent = nullptr;
    }
}

std::shared_ptr<UIView> UIViewController::view() {
    if (m_view == nullptr) {
        if (m_loader) {
            std::exchange(m_loader, nullptr)();
        }
        if (m_view == nullptr) {
            m_view = std::make_shared<UIView>();
        }
        viewDidLoad();
    }
    return m_view;
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& child) {
    if (child->m_parent == this) {
        return;
    }
    child->willMoveToParentViewController(this);
    child->removeFromParentViewController();
    child->m_parent = this;
    m_children.push_back(child);
}

void UIViewController::removeFromParentViewController() {
    UIViewController* const parent = std::exchange(m_parent, nullptr);
    if (parent == nullptr) {
        return;
    }
    const std::shared_ptr<UIViewController> self =
        shared_from_this(); // the parent may hold the last reference
    std::erase(parent->m_children, self);
    didMoveToParentViewController(nullptr);
}

void UIViewController::willMoveToParentViewController(UIViewController* /*parent*/) {}

void UIViewController::didMoveToParentViewController(UIViewController* /*parent*/) {}

void UIViewController::setPreferredContentSize(CGSize size) {
    if (std::exchange(m_preferredContentSize, size) != size && m_sizeChanged) {
        m_sizeChanged(size);
    }
}

} // namespace vantor::platform
