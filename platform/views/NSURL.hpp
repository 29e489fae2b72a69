// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform {

/// An absolute link.
class NSURL {
public:
    /// Absent when the text is no absolute URL: a scheme (letter, then letters, digits, "+", "-", "."), a
    /// colon, and after it only characters that RFC 3986 allows in a URL.
    static std::optional<NSURL> URLWithString(std::string_view text);

    [[nodiscard]] const std::string& absoluteString() const { return m_text; }

private:
    explicit NSURL(std::string_view text) : m_text(text) {}
    std::string m_text;
};

} // namespace vantor::platform
