// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/KernelTree.hpp"

#include "platform/linux/kernel/KernelFile.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace vantor::platform::linux {

bool KernelTree::exists(std::string_view below) const {
    return ::access(path(below).c_str(), F_OK) == 0;
}

std::string KernelTree::linkedName(std::string_view below) const {
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(path(below).c_str(), target.data(), target.size());
    const std::string_view whole(target.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return std::string(whole.substr(whole.find_last_of('/') + 1));
}

KernelTree::Content KernelTree::read(std::string_view below) const {
    KernelFile file(path(below), Shape::manyRecords);
    const KernelFile::Content content = file.read();
    return {content.error, std::string(content.text)};
}

std::optional<std::string> KernelTree::line(std::string_view below) const {
    Content content = read(below);
    if (content.error != 0) {
        return std::nullopt;
    }
    if (content.text.ends_with('\n') || content.text.ends_with('\0')) {
        content.text.pop_back();
    }
    return std::move(content.text);
}

} // namespace vantor::platform::linux
