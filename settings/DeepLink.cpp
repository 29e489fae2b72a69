// SPDX-License-Identifier: MIT
#include "settings/DeepLink.hpp"

namespace vantor::DeepLink {

Target targetOf(std::string_view link) {
    if (link == showCpu) {
        return {.page = Page::processor, .isKnown = true};
    }
    if (link == showStorage) {
        return {.page = Page::storage, .isKnown = true};
    }
    return {.cleansRam = link == cleanRam, .isKnown = link == cleanRam || link == showRam};
}

} // namespace vantor::DeepLink
