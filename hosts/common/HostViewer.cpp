// SPDX-License-Identifier: MIT
#include "hosts/common/HostViewer.hpp"

#include "platform/linux/user/LinuxViewer.hpp"

namespace vantor::hosts::common {

namespace {

std::unique_ptr<platform::Viewer> viewerFor(bool demo, bool useLocale) {
    platform::linux::ViewerOptions options;
    options.useLocale = useLocale;
    if (demo) {
        options.folders = {};
    }
    return std::make_unique<platform::linux::LinuxViewer>(options);
}

} // namespace

HostViewer::HostViewer(bool demo, bool useLocale) : m_viewer(viewerFor(demo, useLocale)) {}

} // namespace vantor::hosts::common
