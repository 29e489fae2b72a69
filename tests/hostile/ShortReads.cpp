// SPDX-License-Identifier: MIT
// Preloaded into a program, lets a read of a file bring at most VANTOR_TEST_SHORT_READS bytes, as a kernel
// may.
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

template<class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::size_t clamped(int descriptor, std::size_t count) {
    struct stat about {};
    const char* const most = std::getenv("VANTOR_TEST_SHORT_READS");
    const bool isFile = ::fstat(descriptor, &about) == 0 && S_ISREG(about.st_mode);
    return isFile && most != nullptr ? std::min<std::size_t>(count, std::strtoul(most, nullptr, 10)) : count;
}

} // namespace

#define VANTOR_EXPORT extern "C" __attribute__((visibility("default")))
VANTOR_EXPORT ssize_t read(int descriptor, void* buffer, std::size_t count) {
    return next<ssize_t(int, void*, std::size_t)>("read")(descriptor, buffer, clamped(descriptor, count));
}
VANTOR_EXPORT ssize_t pread(int descriptor, void* buffer, std::size_t count, off_t from) {
    return next<ssize_t(int, void*, std::size_t, off_t)>("pread")(descriptor, buffer,
                                                                  clamped(descriptor, count), from);
}
// The names that a fortified build calls.
VANTOR_EXPORT ssize_t __read_chk(int descriptor, void* buffer, std::size_t count, std::size_t /*size*/) {
    return read(descriptor, buffer, count);
}
VANTOR_EXPORT ssize_t __pread_chk(int descriptor, void* buffer, std::size_t count, off_t from,
                                  std::size_t /*size*/) {
    return pread(descriptor, buffer, count, from);
}
