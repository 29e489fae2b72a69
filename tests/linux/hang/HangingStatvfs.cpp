// SPDX-License-Identifier: MIT
#include "HangingStatvfs.hpp"

#include <dlfcn.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<bool> hanging{false};
std::atomic<int> entered{0};
} // namespace

// Linked first or preloaded, this statvfs stands in for the C library's: a mount whose server went away. As a
// preloaded library it hangs from the start where VANTOR_TEST_HANG is set, and for good.
extern "C" __attribute__((visibility("default"))) int statvfs(const char* path,
                                                              struct statvfs* about) noexcept {
    using Real = int (*)(const char*, struct statvfs*);
    static const Real real = reinterpret_cast<Real>(::dlsym(RTLD_NEXT, "statvfs"));
    static const bool forGood = std::getenv("VANTOR_TEST_HANG") != nullptr;
    if (forGood || hanging) {
        ++entered;
        while (forGood) {
            ::pause();
        }
        hanging.wait(true);
    }
    return real(path, about);
}

void hangStatvfs(bool hang) {
    hanging = hang;
    hanging.notify_all();
}

int statvfsCallsThatHung() {
    return entered;
}
