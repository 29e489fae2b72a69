// SPDX-License-Identifier: MIT
#include "hosts/common/WidgetContext.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

#include <utility>

namespace vantor::hosts::common {

WidgetContext::WidgetContext(std::function<void(const std::string&)> tell, LinkOpener::Programs programs)
    : m_tell(std::move(tell)), m_opener(std::move(programs)) {}

void WidgetContext::openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) {
    if (!m_opensLinks) {
        if (completionHandler) {
            completionHandler(false);
        }
        return;
    }
    m_opener.open(url, [this, completionHandler = std::move(completionHandler)](bool opened) {
        if (!opened) {
            m_tell(platform::NSLocalizedString("host_NOAPP"));
        }
        if (completionHandler) {
            completionHandler(opened);
        }
    });
}

} // namespace vantor::hosts::common
