// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/Folder.hpp"

#include <string_view>

namespace vantor::platform::linux {

Folder::Folder(posix::Descriptor descriptor) : m_folder(::fdopendir(descriptor.number())) {
    if (m_folder) {
        descriptor.release();
    }
}

void Folder::rewind() {
    if (m_folder) {
        ::rewinddir(m_folder.get());
    }
}

const char* Folder::next() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the folder belongs to this object
    while (const dirent* const entry = m_folder ? ::readdir(m_folder.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            m_type = entry->d_type;
            return entry->d_name;
        }
    }
    return nullptr;
}

} // namespace vantor::platform::linux
