// SPDX-License-Identifier: MIT
#pragma once

#include "platform/propertylist/PropertyListText.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vantor::tests {

inline std::string fromBase64(std::string_view text) {
    std::string bytes;
    EXPECT_TRUE(platform::appendBase64(bytes, text));
    return bytes;
}

} // namespace vantor::tests
