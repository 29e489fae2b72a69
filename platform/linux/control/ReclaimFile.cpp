// SPDX-License-Identifier: MIT
#include "platform/linux/control/ReclaimFile.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

namespace vantor::platform::linux {

ReclaimAnswer ReclaimFile::ask(const std::string& path, std::uint64_t bytes) {
    constexpr std::array<std::string_view, 3> forms{" swappiness=max", " swappiness=200", ""};
    const posix::Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW));
    if (!file.isOpen()) {
        return errno == ENOENT || errno == ENODEV ? ReclaimAnswer::less : ReclaimAnswer::refused;
    }
    for (std::size_t form = m_form; form < forms.size(); ++form) {
        const std::string text = std::to_string(bytes) + std::string(forms[form]);
        if (::write(file.number(), text.data(), text.size()) >= 0) {
            m_form = form;
            return ReclaimAnswer::done;
        }
        if (errno != EINVAL) {
            const bool goesOn = errno == EINTR; // a signal ends it between two rounds; some may have gone
            const bool isSpent = errno == EAGAIN || errno == ENODEV;
            return goesOn ? ReclaimAnswer::done : isSpent ? ReclaimAnswer::less : ReclaimAnswer::refused;
        }
    }
    return ReclaimAnswer::refused;
}

} // namespace vantor::platform::linux
