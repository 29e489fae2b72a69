// SPDX-License-Identifier: MIT
#include "platform/linux/ReleasableScan.hpp"

#include <iostream>

/// Prints what one scan finds for a folder, with the user's folders of the environment.
int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    vantor::platform::linux::LocalPaths paths;
    std::cout << vantor::platform::linux::releasableBytes(
                     vantor::platform::posix::UserFolders::fromEnvironment(), arguments[1], paths,
                     [] { return true; })
              << '\n';
}
