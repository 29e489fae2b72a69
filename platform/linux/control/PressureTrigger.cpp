// SPDX-License-Identifier: MIT
#include "platform/linux/control/PressureTrigger.hpp"

#include "platform/linux/workload/WorkText.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <poll.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>

namespace vantor::platform::linux {

namespace {

constexpr const char* file = "proc/pressure/memory";
/// Microseconds of waiting, and within how many; an ordinary user's window is a multiple of two seconds. The
/// kernel wants the NUL behind it.
constexpr std::array trigger = std::to_array("some 200000 2000000");
constexpr double shortShare = 10; // percent, the same

} // namespace

PressureTrigger::PressureTrigger(KernelTree tree)
    : m_tree(std::move(tree)),
      m_descriptor(::open(m_tree.path(file).c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) {
    struct statfs about {};
    const bool isKernels = m_descriptor.isOpen() && ::fstatfs(m_descriptor.number(), &about) == 0 &&
                           about.f_type == PROC_SUPER_MAGIC;
    if (!isKernels || ::write(m_descriptor.number(), trigger.data(), trigger.size()) < 0) {
        m_descriptor.reset();
    }
}

bool PressureTrigger::isShort() {
    if (!m_descriptor.isOpen()) {
        const std::optional<Pressure> pressure = parsePressure(m_tree.read(file).text);
        return pressure && pressure->average10 >= shortShare;
    }
    struct pollfd entry {};
    entry.fd = m_descriptor.number();
    entry.events = POLLPRI;
    (void)posix::uninterrupted([&] { return ::poll(&entry, 1, 0); });
    if ((entry.revents & POLLERR) != 0) {
        m_descriptor.reset(); // nobody watches any more
        return false;
    }
    // The kernel tells of each event once, and whoever was woken has been told: POLLPRI is gone by now.
    return true;
}

} // namespace vantor::platform::linux
