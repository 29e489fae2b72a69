// SPDX-License-Identifier: MIT
#include "HangingStatvfs.hpp"

#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <atomic>
#include <new>

namespace {

struct State {
    std::atomic<bool> hanging{false};
    std::atomic<int> entered{0};
};

/// The same in all children, since one of them does the asking.
State& state() {
    static State& shared = *new (
        ::mmap(nullptr, sizeof(State), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) State;
    return shared;
}

} // namespace

// Linked first, this statvfs stands in for the C library's: a mount whose server went away.
extern "C" __attribute__((visibility("default"))) int statvfs(const char* path,
                                                              struct statvfs* about) noexcept {
    using Real = int (*)(const char*, struct statvfs*);
    static const Real real = reinterpret_cast<Real>(::dlsym(RTLD_NEXT, "statvfs"));
    if (state().hanging) {
        ++state().entered;
        while (state().hanging) {
            ::usleep(1000);
        }
    }
    return real(path, about);
}

void hangStatvfs(bool hang) {
    state().hanging = hang;
}

int statvfsCallsThatHung() {
    return state().entered;
}
