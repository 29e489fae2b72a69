// SPDX-License-Identifier: MIT
#include "platform/remote/readings/Reading.hpp"

namespace vantor::platform::remote {

bool Reading::isEmpty() const {
    return !memory && processor.empty() && volumes.empty() && links.empty();
}

} // namespace vantor::platform::remote
