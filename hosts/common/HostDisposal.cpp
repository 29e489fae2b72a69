// SPDX-License-Identifier: MIT
#include "hosts/common/HostDisposal.hpp"

#include "platform/linux/removal/LinuxDisposal.hpp"
#include "platform/linux/user/UserDirs.hpp"
#include "platform/simulated/DemoDisposal.hpp"

#include <utility>

namespace vantor::hosts::common {

namespace {

std::unique_ptr<platform::Disposal> disposalFor(bool demo) {
    if (demo) {
        return std::make_unique<platform::DemoDisposal>();
    }
    platform::linux::ReleasablePlaces places{.folders = platform::posix::UserFolders::fromEnvironment()};
    platform::linux::LocalPaths paths;
    places.documents = platform::linux::documentsFolder(places.folders, paths);
    return std::make_unique<platform::linux::LinuxDisposal>(std::move(places));
}

} // namespace

HostDisposal::HostDisposal(bool demo) : m_disposal(disposalFor(demo)) {}

} // namespace vantor::hosts::common
