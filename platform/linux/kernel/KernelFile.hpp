// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// How the kernel makes a file's text. Under /proc a read at offset zero formats the text anew. Where the
/// whole text is one record, one call brings all of it. Where each entry is a record, a call ends between two
/// entries, and only an empty answer is the end of the file.
enum class Shape { oneRecord, manyRecords };

/// A file of kernel text that is read again and again. On procfs and sysfs the descriptor stays open and a
/// read is a pread from the start, which saves the path walk; a descriptor that went stale (the device is
/// gone, the process changed its view) is opened anew, once. Elsewhere (a captured tree) the path is opened
/// for each read, because a file there may be replaced. Not for several threads at once.
class KernelFile {
public:
    /// Longer texts are refused: 65,536 interfaces fit.
    static constexpr std::size_t longest = std::size_t{16} << 20;

    KernelFile(std::string path, Shape shape) : m_path(std::move(path)), m_shape(shape) {}

    struct Content {
        std::string_view text; ///< valid until the next read
        int error = 0;         ///< an errno value; then there is no text
    };
    /// The text's first `wanted` bytes, or all of it where it is shorter.
    [[nodiscard]] Content read(std::size_t wanted = longest);

    [[nodiscard]] const std::string& path() const { return m_path; }
    /// "path: what is wrong", for a failure's reason.
    [[nodiscard]] std::string reason(int error) const { return m_path + ": " + posix::errorText(error); }

private:
    int open();
    int fill(std::size_t wanted);
    [[nodiscard]] bool isWhole() const;

    std::string m_path;
    Shape m_shape;
    posix::Descriptor m_descriptor;
    bool m_keep = false;
    std::vector<char> m_buffer;
    std::size_t m_length = 0;
    std::size_t m_whole = 0; ///< the length of the last text that was read to its end
};

} // namespace vantor::platform::linux
