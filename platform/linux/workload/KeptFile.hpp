// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// One of hundreds of small kernel files that are read again and again. As KernelFile, on procfs and in
/// control groups the descriptor may stay open, which saves the path walk; but all of them share one buffer,
/// and no path is kept. Not for several threads at once.
class KeptFile {
public:
    /// The text, at most 1 MiB of it, valid until the buffer is used again; empty where it cannot be read.
    /// `path` is used where it is not open, or what was open has gone. `mayStay`: whether it is to stay open.
    [[nodiscard]] std::string_view read(const std::string& path, std::vector<char>& buffer, bool mayStay);
    [[nodiscard]] bool isOpen() const { return m_descriptor.isOpen(); }
    /// Whether what was read last was made by the kernel at that moment.
    [[nodiscard]] bool isMadeByTheKernel() const { return m_isMadeByTheKernel; }

private:
    [[nodiscard]] std::string_view fill(std::vector<char>& buffer) const;

    posix::Descriptor m_descriptor;
    bool m_isMadeByTheKernel = false;
};

} // namespace vantor::platform::linux
