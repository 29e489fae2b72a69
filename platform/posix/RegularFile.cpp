// SPDX-License-Identifier: MIT
#include "platform/posix/RegularFile.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace vantor::platform::posix {

std::string readRegularFile(const std::string& path, std::size_t most) {
    constexpr std::size_t atOnce = 4096;
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat about {};
    if (!file.isOpen() || ::fstat(file.number(), &about) != 0 || !S_ISREG(about.st_mode)) {
        return {};
    }
    std::string text;
    for (;;) {
        const std::size_t length = text.size();
        text.resize(std::min(most, std::max(2 * length, atOnce)));
        const ssize_t count =
            uninterrupted([&] { return ::read(file.number(), text.data() + length, text.size() - length); });
        text.resize(length + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count <= 0) {
            return text;
        }
    }
}

} // namespace vantor::platform::posix
