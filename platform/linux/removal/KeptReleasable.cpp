// SPDX-License-Identifier: MIT
#include "platform/linux/removal/KeptReleasable.hpp"

#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <limits>

namespace vantor::platform::linux {

namespace {
constexpr std::string_view heading = "vantor-releasable 2";
constexpr std::size_t longestText = 128;
} // namespace

std::optional<KeptReleasable> parseKeptReleasable(std::string_view text) {
    const std::optional<Line> line = takeLine(text);
    if (!line || !line->ended || !text.empty() || !line->text.starts_with(heading)) {
        return std::nullopt;
    }
    std::string_view rest = line->text.substr(heading.size());
    const std::optional<std::uint64_t> volume = takeNumber(rest);
    const std::optional<std::uint64_t> bytes = takeNumber(rest);
    const std::optional<std::uint64_t> available = takeNumber(rest);
    const std::optional<std::uint64_t> seconds = takeNumber(rest);
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (!volume || !rest.empty() ||
        std::max({bytes.value_or(~most), available.value_or(~most), seconds.value_or(~most)}) > most) {
        return std::nullopt;
    }
    return KeptReleasable{*volume,
                          {static_cast<std::int64_t>(*bytes), static_cast<std::int64_t>(*available)},
                          static_cast<std::int64_t>(*seconds)};
}

std::string formatKeptReleasable(const KeptReleasable& kept) {
    return std::string(heading) + ' ' + std::to_string(kept.volume) + ' ' +
           std::to_string(kept.result.bytes) + ' ' + std::to_string(kept.result.available) + ' ' +
           std::to_string(kept.scanned) + '\n';
}

std::optional<KeptReleasable> loadKeptReleasable(const std::string& path) {
    KernelFile file(path, Shape::oneRecord);
    return parseKeptReleasable(file.read(longestText).text);
}

void saveKeptReleasable(const std::string& path, const KeptReleasable& kept) {
    if (!posix::makeFoldersTo(path)) {
        (void)posix::replaceFile(path, formatKeptReleasable(kept));
    }
}

bool KeptWatch::changed() {
    struct stat about {};
    std::string state;
    if (::stat(m_path.c_str(), &about) == 0) {
        state = std::to_string(about.st_ino) + ' ' + std::to_string(about.st_mtim.tv_sec) + ' ' +
                std::to_string(about.st_mtim.tv_nsec);
    }
    return m_state != std::exchange(m_state, state) && !state.empty();
}

} // namespace vantor::platform::linux
