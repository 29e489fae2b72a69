// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/linux/gpu/DrmDevices.hpp"
#include "platform/linux/gpu/VulkanDevice.hpp"
#include "platform/linux/sysctl/CpuNumbers.hpp"
#include "platform/linux/sysctl/KernelText.hpp"
#include "platform/linux/sysctl/ProcSysKey.hpp"

#include <algorithm>
#include <functional>

using namespace vantor::platform;
using vantor::fuzz::require;

namespace {

void requirePathsStayBelow(std::string_view key) {
    const std::optional<std::string> path = linux::sysctl::procSysPath(key);
    if (path) {
        const std::string framed = "/" + *path + "/";
        require(framed.find("/../") == std::string::npos && framed.find("//") == std::string::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = vantor::fuzz::asText(data, size);
    const auto list = linux::sysctl::parseCpuList(text);
    require(!list || std::ranges::adjacent_find(*list, std::greater_equal<>()) == list->end());
    (void)linux::sysctl::parseCacheSize(text);
    (void)linux::sysctl::parseOsRelease(text, "VERSION_ID");
    const auto cpuinfo = linux::sysctl::parseCpuinfo(text);
    for (const char* machine : {"x86_64", "aarch64", "ppc64"}) {
        require(linux::sysctl::CpuNumbers::from(machine, cpuinfo).type.has_value());
    }
    requirePathsStayBelow(text);
    const SysctlValue value = linux::sysctl::procSysValue(std::string(text));
    require(value.text == text || value.text + "\n" == text);
    (void)linux::gpu::pciName(text, "1002", "73ff");
    (void)linux::gpu::decoded(text);
    return 0;
}
