// SPDX-License-Identifier: MIT
#include "platform/linux/ZramReader.hpp"

#include "platform/linux/figures/ZramStat.hpp"

#include <dirent.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace vantor::platform::linux {

namespace {
constexpr std::chrono::minutes lookAgain{1};
constexpr std::size_t mostDisks = 64;
struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
} // namespace

void ZramReader::findDisks() {
    m_disks.clear();
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(m_blockFolder.c_str()));
    if (!folder) {
        return;
    }
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the folder belongs to this function
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name.starts_with("zram") && m_disks.size() < mostDisks) {
            m_disks.emplace_back(m_blockFolder + '/' + std::string(name) + "/mm_stat", Shape::oneRecord);
        }
    }
}

std::uint64_t ZramReader::used(std::chrono::nanoseconds now) {
    if (!m_looked || now - *m_looked >= lookAgain) {
        m_looked.reset(); // until the list is whole
        findDisks();
        m_looked = now;
    }
    constexpr std::uint64_t most = std::uint64_t{1} << 56; // a disk that claims more is not believed
    std::uint64_t bytes = 0;
    for (KernelFile& disk : m_disks) {
        bytes += std::min(parseZramMemoryUsed(disk.read(512).text).value_or(0), most);
    }
    return bytes;
}

} // namespace vantor::platform::linux
