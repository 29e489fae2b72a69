// SPDX-License-Identifier: MIT
#pragma once

#include "platform/views/NSExtensionContext.hpp"

#include <functional>
#include <utility>

namespace vantor::hosts::widget {

/// The desktop as the widget sees it: offers the expanded mode when asked for, and has links opened.
class DesktopContext final : public platform::NSExtensionContext {
public:
    using Opener = std::function<void(const platform::NSURL&, std::function<void(bool)>)>;

    explicit DesktopContext(Opener opener) : m_opener(std::move(opener)) {}

    void openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) override {
        m_opener(url, std::move(completionHandler));
    }
    void setModeHandler(std::function<void()> handler) { m_modeChanged = std::move(handler); }

protected:
    void largestAvailableDisplayModeDidChange() override {
        if (m_modeChanged) {
            m_modeChanged();
        }
    }

private:
    Opener m_opener;
    std::function<void()> m_modeChanged;
};

} // namespace vantor::hosts::widget
