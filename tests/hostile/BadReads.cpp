// SPDX-License-Identifier: MIT
// Preloaded into a program, makes its reads of files bad in one of two ways. VANTOR_TEST_SHORT_READS=7: a
// read brings so many bytes at most, as a kernel may. VANTOR_TEST_FAILING_READS=/net/dev:5: reads of files
// whose path ends so fail with that error number. (A tracer cannot pick these out: an open file's path has
// the process's number in it.)
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

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

bool fails(int descriptor) {
    const char* const wish = std::getenv("VANTOR_TEST_FAILING_READS");
    if (wish == nullptr) {
        return false;
    }
    const std::string_view text = wish;
    const std::size_t colon = text.rfind(':');
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    if (length < 0 ||
        !std::string_view(path.data(), static_cast<std::size_t>(length)).ends_with(text.substr(0, colon))) {
        return false;
    }
    errno = std::atoi(wish + colon + 1);
    return true;
}

} // namespace

#define VANTOR_EXPORT extern "C" __attribute__((visibility("default")))
VANTOR_EXPORT ssize_t read(int descriptor, void* buffer, std::size_t count) {
    return fails(descriptor) ? -1
                             : next<ssize_t(int, void*, std::size_t)>("read")(descriptor, buffer,
                                                                              clamped(descriptor, count));
}
VANTOR_EXPORT ssize_t pread(int descriptor, void* buffer, std::size_t count, off_t from) {
    return fails(descriptor) ? -1
                             : next<ssize_t(int, void*, std::size_t, off_t)>("pread")(
                                   descriptor, buffer, clamped(descriptor, count), from);
}
// The names that a fortified build calls.
VANTOR_EXPORT ssize_t __read_chk(int descriptor, void* buffer, std::size_t count, std::size_t /*size*/) {
    return read(descriptor, buffer, count);
}
VANTOR_EXPORT ssize_t __pread_chk(int descriptor, void* buffer, std::size_t count, off_t from,
                                  std::size_t /*size*/) {
    return pread(descriptor, buffer, count, from);
}
