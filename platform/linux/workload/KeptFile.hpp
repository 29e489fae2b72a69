// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// Whether the kernel makes a folder's texts at the moment of reading, as on procfs and in control groups.
/// False for one that is not there.
[[nodiscard]] bool isMadeByTheKernel(const std::string& folder);

/// One of hundreds of small kernel files that are read again and again. As KernelFile, the descriptor of a
/// text that the kernel makes may stay open, which saves the path walk; but all of them share one buffer, and
/// no path is kept. Not for several threads at once.
class KeptFile {
public:
    /// The text, at most 1 MiB of it, valid until the buffer is used again; empty where it cannot be read.
    /// `path`, below the descriptor `folder` or the working folder (AT_FDCWD), is used where it is not open,
    /// or what was open has gone. `mayStay`: whether it is to stay open, which only the kernel's own may.
    [[nodiscard]] std::string_view read(int folder, const std::string& path, std::vector<char>& buffer,
                                        bool mayStay);
    [[nodiscard]] bool isOpen() const { return m_descriptor.isOpen(); }

private:
    [[nodiscard]] std::string_view fill(std::vector<char>& buffer) const;

    posix::Descriptor m_descriptor;
};

} // namespace vantor::platform::linux
