// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/Layer.hpp"
#include "platform/drawing/LinearAnimation.hpp"
#include "platform/views/UIViewController.hpp"

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace vantor::platform {

/// What a declarative view must offer to be hosted.
template<class Content>
concept DeclarativeView =
    std::copy_constructible<Content> &&
    requires(const Content& content, const CGRect& rect, Instant now, std::function<void()> changed) {
        { content.body(rect, now) } -> std::same_as<Layers>;
        { content.animation() } -> std::same_as<LinearAnimation>;
        { content.observe(std::move(changed)) } -> std::same_as<std::shared_ptr<void>>; // ends when released
    };

/// A view that is drawn from layers. Hosts look for these in the tree.
class UIHostingView : public UIView {
public:
    using UIView::UIView;

    /// The layers for a rectangle of this view's own coordinates at an instant, back to front.
    [[nodiscard]] virtual Layers layers(const CGRect& rect, Instant now) const = 0;
    /// The one number of the picture that moves by itself; `isRunningAt` tells whether it does.
    [[nodiscard]] virtual LinearAnimation animation() const = 0;
};

/// The view of a hosting controller: yields the content's layers and says when the content changed.
template<DeclarativeView Content>
class ContentView final : public UIHostingView {
public:
    explicit ContentView(std::optional<Content> content) : m_content(std::move(content)) {
        if (m_content) {
            m_observation = m_content->observe([this] { setNeedsDisplay(); });
        }
    }

    [[nodiscard]] Layers layers(const CGRect& rect, Instant now) const override {
        return m_content ? m_content->body(rect, now) : Layers{};
    }
    [[nodiscard]] LinearAnimation animation() const override {
        return m_content ? m_content->animation() : LinearAnimation{};
    }

private:
    std::optional<Content> m_content;
    std::shared_ptr<void> m_observation;
};

/// A controller whose view renders a declarative view, or nothing.
template<DeclarativeView Content>
class UIHostingController : public UIViewController {
public:
    explicit UIHostingController(std::optional<Content> rootView) : m_rootView(std::move(rootView)) {
        setView(std::make_shared<ContentView<Content>>(m_rootView));
    }
    [[nodiscard]] const std::optional<Content>& rootView() const { return m_rootView; }

private:
    std::optional<Content> m_rootView;
};

} // namespace vantor::platform
