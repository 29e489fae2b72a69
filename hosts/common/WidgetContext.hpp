// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/LinkOpener.hpp"
#include "platform/views/NSExtensionContext.hpp"

#include <functional>
#include <string>
#include <utility>

namespace vantor::hosts::common {

/// A host as its widget sees it: has the widget's links opened by the desktop, and tells when none of its
/// programs does.
class WidgetContext final : public platform::NSExtensionContext {
public:
    /// `tell` is handed a line in the user's language, in a turn of the main loop. The host that it belongs
    /// to takes the context away from its controller before it goes.
    explicit WidgetContext(std::function<void(const std::string& line)> tell,
                           LinkOpener::Programs programs = LinkOpener::Programs::installed());

    /// Hears in a later turn of the main loop whether there is a program for the widget's links.
    void askForProgram(std::function<void(bool)> heard) { m_opener.ask("vantor", std::move(heard)); }

    /// Whether there is a desktop with something to open links; none over SSH.
    [[nodiscard]] bool canOpenLinks() const { return m_opensLinks && m_opener.canOpen(); }
    /// Links go nowhere from now on: they would open this machine's app beside another machine's figures.
    void leaveLinksAlone() { m_opensLinks = false; }
    void openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) override;
    [[nodiscard]] bool offersExpanded() const {
        return widgetLargestAvailableDisplayMode() == platform::NCWidgetDisplayMode::expanded;
    }

private:
    const std::function<void(const std::string&)> m_tell;
    bool m_opensLinks = true;
    LinkOpener m_opener; // gone before what it calls back
};

} // namespace vantor::hosts::common
