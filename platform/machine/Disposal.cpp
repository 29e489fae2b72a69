// SPDX-License-Identifier: MIT
#include "platform/machine/Disposal.hpp"

namespace vantor::platform {

Disposal& currentDisposal() {
    Disposal* const disposal = Current<Disposal>::get();
    if (disposal == nullptr) {
        fatalStop("no disposal was put in place");
    }
    return *disposal;
}

} // namespace vantor::platform
