// SPDX-License-Identifier: MIT
#include "hosts/common/SecretFile.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vantor::hosts::common {

namespace {

constexpr std::size_t longest = 65536;

platform::posix::Descriptor openPrivate(const std::string& path, std::string& problem) {
    // A pipe in its place must not hold the start up.
    platform::posix::Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0) {
        problem = path + ": " + platform::posix::errorText(errno);
        return {};
    }
    if (!S_ISREG(status.st_mode) || (status.st_uid != ::geteuid() && status.st_uid != 0)) {
        problem = path + ": is no file of yours";
        return {};
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        problem = path + ": others may read this secret (chmod 600 mends it)";
        return {};
    }
    return file;
}

} // namespace

std::optional<std::string> readSecret(const std::string& path, std::string& problem) {
    const platform::posix::Descriptor file = openPrivate(path, problem);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::string secret(longest + 1, '\0');
    const ssize_t count =
        platform::posix::uninterrupted([&] { return ::read(file.number(), secret.data(), secret.size()); });
    secret.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    while (secret.ends_with('\n') || secret.ends_with('\r')) {
        secret.pop_back();
    }
    // A line's end inside would let it write headers of its own.
    const bool isLine = std::ranges::none_of(
        secret, [](char sign) { return static_cast<unsigned char>(sign) < ' ' || sign == '\x7F'; });
    if (secret.empty() || secret.size() > longest || !isLine) {
        problem = path + ": holds no single line";
        return std::nullopt;
    }
    return secret;
}

bool isPrivate(const std::string& path, std::string& problem) {
    return openPrivate(path, problem).isOpen();
}

} // namespace vantor::hosts::common
