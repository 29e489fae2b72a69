// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QCoreApplication>

// The toolkit's own locks are not built with the sanitizer, which so sees none of them. Only ours are looked
// at.
extern "C" const char* __tsan_default_suppressions() { // NOLINT: the sanitizer's name
    return "called_from_lib:libQt6Core.so\n";
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
