// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <dirent.h>

#include <memory>
#include <string>

namespace vantor::platform::linux {

/// An open folder, whose entries are read one by one. Not for several threads at once.
class Folder {
public:
    /// One that is absent or cannot be opened has no entries.
    explicit Folder(const std::string& path) : m_folder(::opendir(path.c_str())) {}
    explicit Folder(posix::Descriptor descriptor);

    /// The next entry's name, in the file system's order and without "." and ".."; null at the end. Valid
    /// until the next call.
    [[nodiscard]] const char* next();
    /// From the start again, with what has come and gone meanwhile.
    void rewind();
    /// Whether the last entry may be a folder; without asking about it, so that some that are not may be,
    /// too.
    [[nodiscard]] bool mayBeFolder() const { return m_type == DT_DIR || m_type == DT_UNKNOWN; }
    /// The descriptor to look an entry up by; -1 for a folder that could not be opened.
    [[nodiscard]] int number() const { return m_folder ? ::dirfd(m_folder.get()) : -1; }

private:
    struct Close {
        void operator()(DIR* folder) const { ::closedir(folder); }
    };
    std::unique_ptr<DIR, Close> m_folder;
    unsigned char m_type = DT_UNKNOWN;
};

} // namespace vantor::platform::linux
