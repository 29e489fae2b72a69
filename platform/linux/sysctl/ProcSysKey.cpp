// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/ProcSysKey.hpp"

#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/sysctl/KernelText.hpp"

#include <cstdint>

namespace vantor::platform::linux::sysctl {

namespace {

bool leavesFolder(std::string_view path) {
    if (path.empty() || path.ends_with('/')) {
        return true;
    }
    while (!path.empty()) {
        const std::string_view part = takeUntil(path, '/');
        if (part.empty() || part == "." || part == "..") {
            return true;
        }
    }
    return false;
}

} // namespace

std::string procSysKey(std::string_view path) {
    std::string key(path);
    for (char& c : key) {
        c = c == '.' ? '/' : c == '/' ? '.' : c;
    }
    return key;
}

std::optional<std::string> procSysPath(std::string_view key) {
    const std::size_t first = key.find_first_of("./");
    const bool isPath = first == std::string_view::npos || key[first] == '/';
    std::string path = isPath ? std::string(key) : procSysKey(key);
    return leavesFolder(path) ? std::nullopt : std::optional(std::move(path));
}

SysctlValue procSysValue(std::string text) {
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    const bool negative = text.starts_with('-');
    const auto magnitude = numberFrom(std::string_view(text).substr(negative ? 1 : 0));
    constexpr std::uint64_t lowest = std::uint64_t{1} << 63U;
    if (!magnitude || (negative && *magnitude > lowest)) {
        return SysctlValue::ofText(std::move(text));
    }
    return SysctlValue::ofTextNumber(std::move(text), negative ? 0 - *magnitude : *magnitude);
}

} // namespace vantor::platform::linux::sysctl
