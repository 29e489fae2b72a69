// SPDX-License-Identifier: MIT
#include "platform/foundation/NSProcessInfo.hpp"

#include "platform/machine/Machine.hpp"

namespace vantor::platform {

std::uint64_t NSProcessInfo::physicalMemory() const {
    return currentMachine().physicalMemory();
}

bool NSProcessInfo::isiOSAppOnMac() const {
    return currentMachine().isiOSAppOnMac();
}

} // namespace vantor::platform
