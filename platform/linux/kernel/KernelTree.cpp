// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/KernelTree.hpp"

#include "platform/linux/kernel/KernelFile.hpp"

#include <unistd.h>

#include <utility>

namespace vantor::platform::linux {

bool KernelTree::exists(std::string_view below) const {
    return ::access(path(below).c_str(), F_OK) == 0;
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
