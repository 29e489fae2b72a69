// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/CGGeometry.hpp"
#include "platform/views/NSURL.hpp"

#include <functional>

namespace vantor::platform {

/// How much room the host gives a widget. The host may hand over values that are not named here.
enum class NCWidgetDisplayMode : long { compact = 0, expanded = 1 };

enum class NCUpdateResult : unsigned long { newData = 0, noData = 1, failed = 2 };

/// The host as an extension sees it. A host derives from it.
class NSExtensionContext {
public:
    virtual ~NSExtensionContext() = default;

    /// The largest mode that the widget can use; compact until it says otherwise. With expanded the host
    /// offers "Show More" and "Show Less".
    [[nodiscard]] NCWidgetDisplayMode widgetLargestAvailableDisplayMode() const { return m_largest; }
    void setWidgetLargestAvailableDisplayMode(NCWidgetDisplayMode mode) { m_largest = mode; }

    /// Asks the host to open a link. The handler is told whether that worked; it may be empty.
    virtual void openURL(const NSURL& url, std::function<void(bool success)> completionHandler) = 0;

private:
    NCWidgetDisplayMode m_largest = NCWidgetDisplayMode::compact;
};

/// What the host calls on a widget's controller. Main thread.
class NCWidgetProviding {
public:
    virtual ~NCWidgetProviding() = default;
    /// The widget comes on screen: it says through the handler whether there is something new to show.
    virtual void
    widgetPerformUpdateWithCompletionHandler(const std::function<void(NCUpdateResult)>& handler) = 0;
    /// The host has given the widget another mode, in which it may be at most this large, in points.
    virtual void widgetActiveDisplayModeDidChange(NCWidgetDisplayMode mode, CGSize maximumSize) = 0;
};

} // namespace vantor::platform
