// SPDX-License-Identifier: MIT
#include "hosts/common/UserFile.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantor::hosts::common {

namespace posix = platform::posix;

std::string userFilePath(const std::string& folder, std::string_view name) {
    return folder.empty() ? std::string() : folder + '/' + std::string(name);
}

std::optional<std::string> writeUserFile(const std::string& path, std::string_view text) {
    if (path.empty()) {
        return "there is no home folder";
    }
    if (std::optional<std::string> problem = posix::makeFoldersTo(path)) {
        return problem;
    }
    return posix::replaceFile(path, text);
}

std::string readUserFile(const std::string& path) {
    constexpr std::size_t longest = 4096;
    const posix::Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat about {};
    if (!file.isOpen() || ::fstat(file.number(), &about) != 0 || !S_ISREG(about.st_mode)) {
        return {};
    }
    std::string text(longest, '\0');
    const ssize_t length =
        posix::uninterrupted([&] { return ::read(file.number(), text.data(), text.size()); });
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
}

} // namespace vantor::hosts::common
