// SPDX-License-Identifier: MIT
#include "hosts/common/JsonDepth.hpp"

namespace vantor::hosts::common {

bool nestsTooDeep(std::string_view json) {
    constexpr int deepest = 32;
    int depth = 0;
    bool isText = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char sign = json[i];
        if (isText && sign == '\\') {
            ++i; // what follows ends no text
        } else if (sign == '"') {
            isText = !isText;
        } else if (!isText && (sign == '[' || sign == '{')) {
            if (++depth > deepest) {
                return true;
            }
        } else if (!isText && (sign == ']' || sign == '}')) {
            --depth;
        }
    }
    return false;
}

} // namespace vantor::hosts::common
