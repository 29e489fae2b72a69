// SPDX-License-Identifier: MIT
#include "platform/linux/removal/ReleasableCount.hpp"

#include <iostream>

/// Prints what one scan finds for a folder, with the user's folders of the environment.
int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    using namespace vantor::platform;
    linux::LocalPaths paths;
    const linux::ReleasablePlaces places{.folders = posix::UserFolders::fromEnvironment(),
                                         .documents = arguments[1]};
    std::cout << linux::countReleasable(places, paths, [] { return true; }).bytes() << '\n';
}
