// SPDX-License-Identifier: MIT
#include "platform/gpu/MTLDevice.hpp"

#include <atomic>

namespace vantor::platform {

namespace {
std::atomic<MTLDeviceSource*> sourceInPlace{nullptr};
} // namespace

std::optional<MTLDevice> MTLCreateSystemDefaultDevice() {
    MTLDeviceSource* const source = sourceInPlace.load();
    return (source != nullptr ? *source : defaultMTLDeviceSource()).systemDefaultDevice();
}

MTLDeviceSourceScope::MTLDeviceSourceScope(MTLDeviceSource& source)
    : m_before(sourceInPlace.exchange(&source)) {}

MTLDeviceSourceScope::~MTLDeviceSourceScope() {
    sourceInPlace.store(m_before);
}

} // namespace vantor::platform
