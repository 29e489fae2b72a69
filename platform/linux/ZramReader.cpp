// SPDX-License-Identifier: MIT
#include "platform/linux/ZramReader.hpp"

#include "platform/linux/figures/ZramStat.hpp"
#include "platform/linux/kernel/Folder.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

namespace {
constexpr std::chrono::minutes lookAgain{1};
constexpr std::size_t mostDisks = 64;
} // namespace

void ZramReader::findDisks() {
    const std::string block = "sys/block/";
    m_disks.clear();
    Folder folder(m_tree.path(block));
    while (const char* const name = folder.next()) {
        if (std::string_view(name).starts_with("zram") && m_disks.size() < mostDisks) {
            m_disks.emplace_back(m_tree.path(block + name + "/mm_stat"), Shape::oneRecord);
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
