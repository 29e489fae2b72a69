// SPDX-License-Identifier: MIT
#pragma once

#include "logging/Logga.hpp"
#include "platform/core/FatalStop.hpp"
#include "platform/views/UIHostingController.hpp"
#include "platform/views/UIView.hpp"

#include <algorithm>
#include <memory>
#include <optional>

namespace vantor {

/// A plain view that carries a declarative one: it keeps a hosting controller, attaches it to a parent
/// controller and pins the hosted view to its own edges. Main thread only.
template<platform::DeclarativeView Content>
class HostingContainer final : public platform::UIView {
public:
    using Controller = platform::UIHostingController<Content>;

    /// A container that shows `content`. Its frame is zero until it is put into a superview.
    static std::shared_ptr<HostingContainer> initWithContent(Content content,
                                                             platform::UIViewController& parent) {
        auto container = std::make_shared<HostingContainer>(platform::NSCoder{});
        container->install(std::move(content), parent);
        return container;
    }
    /// From an archive (`initWithCoder:`): a container without content.
    explicit HostingContainer(const platform::NSCoder& /*coder*/) {}
    /// Always fatal, since a container needs content.
    [[noreturn]] static void initWithFrame(const platform::CGRect& /*frame*/) {
        platform::fatalStop("a HostingContainer cannot be made from a frame alone");
    }
    ~HostingContainer() override;

    [[nodiscard]] const std::shared_ptr<Controller>& hostingController() const { return m_hostingController; }

    void didMoveToSuperview() override {
        platform::UIView::didMoveToSuperview();
        if (const std::shared_ptr<platform::UIView> above = superview()) {
            setFrame({{0, 0}, above->frame().size});
        }
    }

private:
    void install(Content content, platform::UIViewController& parent);
    void pin(platform::UIView& hosted);
    [[nodiscard]] std::shared_ptr<platform::UIView> hostedView() const;

    std::shared_ptr<Controller> m_hostingController = std::make_shared<Controller>(std::nullopt);
};

template<platform::DeclarativeView Content>
std::shared_ptr<platform::UIView> HostingContainer<Content>::hostedView() const {
    std::shared_ptr<platform::UIView> view = m_hostingController->view();
    if (view == nullptr) {
        platform::fatalStop("a hosting controller has lost its view");
    }
    return view;
}

template<platform::DeclarativeView Content>
void HostingContainer<Content>::install(Content content, platform::UIViewController& parent) {
    m_hostingController->willMoveToParentViewController(nullptr);
    hostedView()->removeFromSuperview();
    m_hostingController->removeFromParentViewController();

    m_hostingController = std::make_shared<Controller>(std::move(content));
    const std::shared_ptr<platform::UIView> hosted = hostedView();
    hosted->setBackgroundColor(platform::UIColor::clearColor());
    hosted->invalidateIntrinsicContentSize();
    parent.addChildViewController(m_hostingController);
    const auto isShown = [&] { return std::ranges::find(subviews(), hosted) != subviews().end(); };
    if (isShown()) {
        hosted->removeFromSuperview();
    }
    if (!isShown()) { // asked again on purpose: the view must be in place whatever came before
        addSubview(hosted);
        pin(*hosted);
    }
    m_hostingController->didMoveToParentViewController(&parent);
}

template<platform::DeclarativeView Content>
void HostingContainer<Content>::pin(platform::UIView& hosted) {
    hosted.setTranslatesAutoresizingMaskIntoConstraints(false);
    hosted.leadingAnchor().constraintEqualToAnchor(leadingAnchor()).setActive(true);
    hosted.trailingAnchor().constraintEqualToAnchor(trailingAnchor()).setActive(true);
    hosted.topAnchor().constraintEqualToAnchor(topAnchor()).setActive(true);
    hosted.bottomAnchor().constraintEqualToAnchor(bottomAnchor()).setActive(true);
}

template<platform::DeclarativeView Content>
HostingContainer<Content>::~HostingContainer() {
    Logga::debug("HostingContainer deinit");
    m_hostingController->willMoveToParentViewController(nullptr);
    hostedView()->removeFromSuperview();
    m_hostingController->removeFromParentViewController();
}

} // namespace vantor
