// SPDX-License-Identifier: MIT
#include "platform/gpu/MTLDevice.hpp"

namespace vantor::platform {

std::optional<MTLDevice> MTLCreateSystemDefaultDevice() {
    MTLDeviceSource* const source = Current<MTLDeviceSource>::get();
    return (source != nullptr ? *source : defaultMTLDeviceSource()).systemDefaultDevice();
}

} // namespace vantor::platform
