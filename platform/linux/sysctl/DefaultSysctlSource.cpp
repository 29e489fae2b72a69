// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/LinuxSysctlSource.hpp"

#include <sys/utsname.h>
#include <unistd.h>

namespace vantor::platform {

namespace {

linux::sysctl::SystemCalls::Names names() {
    utsname found{};
    if (::uname(&found) != 0) {
        return {};
    }
    return {found.sysname, found.nodename, found.release, found.version, found.machine};
}

std::uint64_t pageSize() {
    return static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace

SysctlSource& defaultSysctlSource() {
    // Never destroyed: threads may still ask while the process ends.
    static auto& source = *new linux::sysctl::LinuxSysctlSource("/", {names, pageSize});
    return source;
}

} // namespace vantor::platform
