// SPDX-License-Identifier: MIT
#include "hosts/common/WidgetContext.hpp"

#include "platform/foundation/NSLocalizedString.hpp"

#include <utility>

namespace vantor::hosts::common {

WidgetContext::WidgetContext(std::function<void(const std::string&)> tell, LinkOpener::Programs programs,
                             std::string_view noProgram)
    : m_tell(std::move(tell)), m_noProgram(noProgram), m_opener(std::move(programs)) {}

void WidgetContext::openURL(const platform::NSURL& url, std::function<void(bool)> completionHandler) {
    m_opener.open(url, [this, link = url.absoluteString(),
                        completionHandler = std::move(completionHandler)](bool opened) {
        if (!opened) {
            m_tell(platform::textWithValue(platform::NSLocalizedString(m_noProgram), "link", link));
        }
        if (completionHandler) {
            completionHandler(opened);
        }
    });
}

} // namespace vantor::hosts::common
